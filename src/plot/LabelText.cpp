#include "plot/LabelText.h"

#include "core/Format.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "time/DateTool.h"

#include <cmath>
#include <optional>

namespace Yul::detail {
namespace {

struct Position
{
    std::string_view name;
    LabelPosition position;
};

constexpr Position POSITIONS[] = {
    {"ul", UPPER_LEFT},  {"uc", UPPER_CENTER},  {"ur", UPPER_RIGHT},
    {"ll", LOWER_LEFT},  {"lc", LOWER_CENTER},  {"lr", LOWER_RIGHT},
    {"cl", MIDDLE_LEFT}, {"cc", MIDDLE_CENTER}, {"cr", MIDDLE_RIGHT},
};

constexpr int WITH_WEEKDAY = 1;

/// A full minute is shown without its seconds.
Date shown(Date const & date)
{
    if (date.getSecond() != 0)
        return date;
    return {date.getYear(), date.getMonth(), date.getDay(), date.getHour(), date.getMinute(), Const::MISS};
}

std::string initialTime(LabelFacts const & facts)
{
    String label;
    DateTool::createLabel(shown(facts.date), facts.zone, label);
    return label.get();
}

std::string validTime(LabelFacts const & facts)
{
    String label;
    DateTool::createLabel("", shown(facts.valid), facts.zone, WITH_WEEKDAY, label);
    return label.get();
}

std::string forecastTime(LabelFacts const & facts)
{
    if (!facts.date.isSet())
        return {};
    String label;
    if (facts.fore.isSpan())
        DateTool::createLabel(shown(facts.date), facts.zone, "", facts.fore, label);
    else
        DateTool::createLabel(shown(facts.date), facts.zone, "", facts.fore.getHours(), label);
    std::string_view text = label.get();
    while (text.starts_with(' '))
        text.remove_prefix(1);
    return std::string(text);
}

std::string currentTime()
{
    String label;
    DateTool::getCurrent(label);
    return label.get();
}

/// The text of a code; none for a character that is not one.
std::optional<std::string> codeText(char code, LabelFacts const & facts)
{
    switch (code) {
    case 'v':
        return facts.var_long_name.empty() ? facts.var_name : facts.var_long_name;
    case 'n':
        return facts.var_name;
    case 'l':
        return facts.level;
    case 'u':
        return facts.units;
    case 't':
        return validTime(facts);
    case 'i':
        return initialTime(facts);
    case 'f':
        return forecastTime(facts);
    case 'h':
        return plainNumber(facts.fore.getHours());
    case 'm':
        return facts.model;
    case 'c':
        return plainNumber(facts.interval);
    case 'a':
        return plainNumber(facts.min);
    case 'z':
        return plainNumber(facts.max);
    case 'd':
        return currentTime();
    case 'p':
        return facts.plot_name;
    case 'T':
        return facts.title;
    default:
        return std::nullopt;
    }
}

/// Expands one label; a group in braces is kept back until it is known to be whole.
class Expander
{
public:
    explicit Expander(LabelFacts const & label_facts) : facts(label_facts) {}

    std::string expand(std::string_view text)
    {
        for (std::size_t i = 0; i < text.size(); ++i) {
            bool const has_next = i + 1 < text.size();
            if (text[i] == '%' && has_next)
                addCode(text[++i]);
            else if (text.substr(i, 2) == "\\n")
                addNewline(i);
            else if (text[i] == '{' && !is_group)
                is_group = true;
            else if (text[i] == '}' && is_group)
                endGroup();
            else
                add(text.substr(i, 1));
        }
        endGroup();
        return done;
    }

private:
    void add(std::string_view text) { (is_group ? group : done).append(text); }

    void addNewline(std::size_t & i)
    {
        add("\n");
        ++i;
    }

    void addCode(char code)
    {
        std::optional<std::string> const text = codeText(code, facts);
        if (!text)
            return add(std::string_view(&code, 1));
        has_gap = has_gap || (is_group && text->empty());
        add(*text);
    }

    void endGroup()
    {
        if (is_group && !has_gap)
            done += group;
        group.clear();
        is_group = has_gap = false;
    }

    LabelFacts const & facts;
    std::string done;
    std::string group;
    bool is_group = false;
    bool has_gap = false;
};

} // namespace

LabelPosition findPosition(std::string_view name)
{
    for (auto const & [known, position] : POSITIONS)
        if (sameIgnoringCase(name, known))
            return position;
    return NO_POSITION;
}

std::string expandLabel(std::string_view text, LabelFacts const & facts)
{
    return Expander(facts).expand(text);
}

bool isImageLabel(std::string_view text)
{
    return text.starts_with("im:") || text.starts_with("if:");
}

std::string plainNumber(float value)
{
    if (isMissing(value) || !std::isfinite(value))
        return {};
    return format("%.6g", static_cast<double>(value));
}

} // namespace Yul::detail
