#include "core/ResrcCL.h"

#include "core/StrLib.h"
#include "core/String.h"

#include <string_view>

namespace Yul {
namespace {

/// The option without its dashes; empty for an argument that is not an option.
std::string_view optionText(std::string_view argument)
{
    std::size_t const dashes = argument.starts_with("--") ? 2 : argument.starts_with('-') ? 1 : 0;
    std::string_view const text = argument.substr(dashes);
    bool const has_letter = !text.empty() && ((text.front() >= 'a' && text.front() <= 'z') ||
                                              (text.front() >= 'A' && text.front() <= 'Z'));
    return dashes > 0 && has_letter ? text : std::string_view();
}

} // namespace

int ResrcCL::rewind()
{
    index = 1;
    num_positional = 0;
    return 1;
}

int ResrcCL::getKeyed(String & key, String & value)
{
    if (index >= arguments.getNum())
        return -1;
    std::string_view const argument = arguments.getString(index);
    if (argument == "--") {
        ++index;
        kind = END;
        key.clear();
        value.clear();
        return 1;
    }
    std::string_view const option = optionText(argument);
    if (option.empty())
        return 0;

    ++index;
    std::size_t const equal = option.find('=');
    char const * const next = arguments.getString(index);
    key.assign(option.substr(0, equal));
    if (equal != std::string_view::npos) {
        kind = EQUAL;
        value.assign(option.substr(equal + 1));
    } else if (next != nullptr && optionText(next).empty()) {
        kind = SEPARATE;
        value.assign(next);
        ++index;
    } else {
        kind = BARE;
        value.clear();
    }
    return 1;
}

int ResrcCL::getPosition(String & value)
{
    if (index >= arguments.getNum())
        return -1;
    value.set(arguments.getString(index));
    ++index;
    return num_positional++;
}

int ResrcCL::compare(char const * given, char const * full, char const * brief)
{
    std::string_view const key = detail::viewOf(given);
    if (key.empty())
        return 0;
    if (key == detail::viewOf(brief))
        return 2;
    return detail::viewOf(full).starts_with(key) ? 1 : 0;
}

} // namespace Yul
