#include "grid/GridSpec.h"

#include "core/Number.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/Yul.h"

#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Yul {
namespace {

constexpr std::string_view ANY = "*";
constexpr int MAX_CODE = 65535;
constexpr std::size_t MAX_PARTS = 4;

bool isOpen(std::string_view text)
{
    return text.empty() || text == ANY;
}

bool isCode(int code)
{
    return detail::isMissing(code) || (code >= 0 && code <= MAX_CODE);
}

struct Centre
{
    std::string_view name; ///< small letters
    int code;
};

/// Originating centres by what they are called. WMO Manual on Codes 306, volume I.2, common code table C-1.
constexpr Centre CENTRES[] = {
    {"bom", 1},    {"ncep", 7},  {"jma", 34}, {"cma", 38}, {"kma", 40},         {"cmc", 54},
    {"fnmoc", 58}, {"ukmo", 74}, {"dwd", 78}, {"mf", 85},  {"meteofrance", 85}, {"ecmwf", 98},
};

/// A number of 0 to 65535, Const::MISS where it is left open; none for anything else.
std::optional<int> readCode(std::string_view text)
{
    if (isOpen(text))
        return Const::MISS;
    int code = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
    bool const is_whole = error == std::errc() && end == text.data() + text.size();
    return is_whole && code >= 0 && code <= MAX_CODE ? std::optional(code) : std::nullopt;
}

/// A centre by name or number.
std::optional<int> readCentre(std::string_view text)
{
    for (auto const & centre : CENTRES)
        if (detail::sameIgnoringCase(text, centre.name))
            return centre.code;
    return readCode(text);
}

std::string codeText(int code)
{
    return detail::isMissing(code) ? std::string(ANY) : std::to_string(code);
}

/// A forecast on whole hours gets its unit, so that the text reads well behind a level.
std::string foreText(ForeTime const & fore)
{
    String text;
    fore.toText(text);
    std::string out(text.view());
    if (!out.empty() && detail::isDigit(out.back()))
        out += 'h';
    return out;
}

/// What `toString` of a part writes, empty for an open part.
template <class Part> std::string partText(Part const & part)
{
    if (!part.isSet())
        return {};
    String text;
    part.toString(text);
    return std::string(text.view());
}

} // namespace

int ModelSpec::init()
{
    *this = ModelSpec();
    return 1;
}

int ModelSpec::set(char const * text)
{
    if (decode(text) == 1)
        return 1;
    Yul::outWarning("ModelSpec::set: Invalid model: %s\n", text != nullptr ? text : "");
    return 0;
}

int ModelSpec::decode(char const * text)
{
    auto const parts = detail::split(detail::viewOf(text), ':');
    if (parts.size() > 2)
        return 0;
    auto const source_code = readCentre(detail::trimmed(parts[0]));
    auto const model_code = readCode(parts.size() > 1 ? detail::trimmed(parts[1]) : ANY);
    return source_code && model_code ? set(*source_code, *model_code) : 0;
}

int ModelSpec::set(int source_code, int model_code)
{
    if (!isCode(source_code) || !isCode(model_code))
        return 0;
    source = source_code;
    model = model_code;
    return 1;
}

int ModelSpec::set(ModelSpec const & spec)
{
    *this = spec;
    return 1;
}

int ModelSpec::toString(String & text) const
{
    auto out = codeText(source);
    if (!detail::isMissing(model))
        out += ':' + codeText(model);
    text.assign(out);
    return 1;
}

bool ModelSpec::match(ModelSpec const & spec) const
{
    return (detail::isMissing(source) || source == spec.source) &&
           (detail::isMissing(model) || model == spec.model);
}

int ModelSpec::print() const
{
    String text;
    toString(text);
    text.append("\n");
    detail::writeOut(text.view());
    return 1;
}

int GridSpec::init()
{
    *this = GridSpec();
    return 1;
}

int GridSpec::set(char const * text)
{
    if (decode(text) == 1)
        return 1;
    Yul::outWarning("GridSpec::set: Invalid grid specification: %s\n", text != nullptr ? text : "");
    return 0;
}

int GridSpec::decode(char const * text)
{
    std::vector<std::string> parts;
    for (auto const part : detail::split(detail::viewOf(text), ','))
        parts.emplace_back(isOpen(detail::trimmed(part)) ? std::string_view() : detail::trimmed(part));
    if (parts.size() > MAX_PARTS)
        return 0;
    parts.resize(MAX_PARTS);

    GridSpec next;
    bool const is_read = (parts[0].empty() || next.var.decode(parts[0].c_str()) == 1) &&
                         (parts[1].empty() || next.level.decode(parts[1].c_str()) == 1) &&
                         (parts[2].empty() || next.fore.set(parts[2].c_str()) == 1) &&
                         next.model.decode(parts[3].c_str()) == 1;
    return is_read ? set(next) : 0;
}

int GridSpec::set(GridSpec const & spec)
{
    *this = spec;
    return 1;
}

int GridSpec::setVar(Variable const & variable)
{
    return var.set(variable);
}

int GridSpec::setVar(char const * text)
{
    return var.set(text);
}

int GridSpec::setLevel(Level const & value)
{
    return level.set(value);
}

int GridSpec::setLevel(char const * text)
{
    return level.set(text);
}

int GridSpec::setForeTime(ForeTime const & value)
{
    fore = value;
    return 1;
}

int GridSpec::setForeTime(char const * text)
{
    return fore.set(text);
}

int GridSpec::setModel(ModelSpec const & value)
{
    return model.set(value);
}

int GridSpec::setModel(char const * text)
{
    return model.set(text);
}

bool GridSpec::isSet() const
{
    return var.isSet() || level.isSet() || fore.isSet() || model.isSet();
}

int GridSpec::toString(String & text) const
{
    auto out = partText(var) + ',' + partText(level) + ',' + foreText(fore) + ',' + partText(model);
    while (out.ends_with(','))
        out.pop_back();
    text.assign(out.empty() ? ANY : std::string_view(out));
    return 1;
}

bool GridSpec::match(GridSpec const & spec) const
{
    return (!var.isSet() || var.compare(spec.var)) && (!level.isSet() || level.compare(spec.level)) &&
           (!fore.isSet() || fore.match(spec.fore)) && model.match(spec.model);
}

int GridSpec::print() const
{
    String text;
    toString(text);
    text.append("\n");
    detail::writeOut(text.view());
    return 1;
}

} // namespace Yul
