// The variable part of a printf- or scanf-style operation.
#pragma once

#include <cstdarg>

namespace Yul::detail {

/// Reads the arguments of a variadic operation one by one. A caller that cannot vouch for how many arguments
/// it passes puts a Limit round the call: arguments beyond it read as zero or null, never as stray memory.
class VarArgs
{
public:
    /// While it lives, every VarArgs made on this thread yields at most `count` real arguments.
    class Limit
    {
    public:
        explicit Limit(int count) : before(limit) { limit = count; }

        ~Limit() { limit = before; }

        Limit(Limit const &) = delete;
        Limit & operator=(Limit const &) = delete;

    private:
        int before;
    };

    explicit VarArgs(std::va_list list) : remaining(limit) { va_copy(args, list); }

    ~VarArgs() { va_end(args); }

    VarArgs(VarArgs const &) = delete;
    VarArgs & operator=(VarArgs const &) = delete;

    template <class T> T next()
    {
        if (remaining == 0)
            return T{};
        if (remaining > 0)
            --remaining;
        return va_arg(args, T);
    }

private:
    static inline thread_local int limit = -1; // negative: no limit
    std::va_list args{};
    int remaining;
};

} // namespace Yul::detail
