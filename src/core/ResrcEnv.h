// Settings from environment variables.
#pragma once

namespace Yul {

class Resrc;
class String;

class ResrcEnv
{
public:
    /// Looks a setting up in the environment; the first variable that is defined wins, an empty one too:
    /// "yul_" and the qualified name of the key (see detail::qualifiedName, joined by "_"), then the one
    /// named by `alt` (may be null or empty), then "yul" followed by the key. Returns 1 and the value, or 0
    /// with the value as it was.
    static int get(Resrc & store, char const * key, char const * alt, String & value);
};

} // namespace Yul
