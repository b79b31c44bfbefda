#include "core/Resrc.h"

#include "core/Format.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/Scan.h"
#include "core/StrLib.h"

#include <array>
#include <cstdarg>
#include <utility>

namespace Yul {
namespace {

/// What printAll puts between name and value, by source type.
constexpr std::array<std::string_view, 6> TAGS = {": ", ": ", " (file): ", " (env): ", " (cmd): ", ": "};

constexpr std::array<std::string_view, 3> FALSE_WORDS = {"no", "off", "false"};

std::string_view tagOf(int type)
{
    bool const is_known = type >= 0 && static_cast<std::size_t>(type) < TAGS.size();
    return TAGS[is_known ? static_cast<std::size_t>(type) : 0];
}

} // namespace

int Resrc::clear()
{
    index.clear();
    entries.clear();
    cursor = END;
    return 1;
}

Resrc::Entry const * Resrc::find(char const * name) const
{
    if (name == nullptr)
        return nullptr;
    auto const found = index.find(name);
    return found != index.end() ? &entries[found->second] : nullptr;
}

Resrc::Entry * Resrc::find(char const * name)
{
    return const_cast<Entry *>(std::as_const(*this).find(name));
}

Resrc::Entry & Resrc::create(char const * name, int type)
{
    Entry & entry = entries.emplace_back(Entry{name, std::nullopt, type});
    index.emplace(entry.name, entries.size() - 1);
    return entry;
}

int Resrc::add(char const * name, char const * value, int type)
{
    if (name == nullptr)
        return 0;
    std::optional<std::string> next; // made first: value may point into the entry itself
    if (value != nullptr)
        next = value;
    Entry * entry = find(name);
    if (entry == nullptr)
        entry = &create(name, type);
    entry->type = type;
    entry->value = std::move(next);
    return 1;
}

int Resrc::set(char const * name, char const * value, int type)
{
    add(name, value, type);
    return 1;
}

int Resrc::set(char const * name, char const * value)
{
    return set(name, value, USER);
}

int Resrc::set(char const * name, String & value)
{
    return set(name, value.get(), USER);
}

int Resrc::put(char const * name, char const * value)
{
    return add(name, value, USER);
}

int Resrc::join(char const * name, char const * value, char sep, bool at_end)
{
    if (name == nullptr)
        return 0;
    Entry * entry = find(name);
    if (entry == nullptr)
        entry = &create(name, NONE);
    if (value == nullptr)
        return 1;
    if (!entry->value) {
        entry->value = value;
        return 1;
    }
    std::string const separator(1, sep != '\0' ? sep : '\n');
    entry->value = at_end ? *entry->value + separator + value : value + separator + *entry->value;
    return 1;
}

int Resrc::append(char const * name, char const * value, char sep)
{
    return join(name, value, sep, true);
}

int Resrc::prepend(char const * name, char const * value, char sep)
{
    return join(name, value, sep, false);
}

char const * Resrc::get(char const * name) const
{
    return get(name, static_cast<char const *>(nullptr));
}

char const * Resrc::get(char const * name, char const * def) const
{
    Entry const * const entry = find(name);
    if (entry == nullptr)
        return def;
    return entry->value ? entry->value->c_str() : "";
}

int Resrc::get(char const * name, int def) const
{
    std::string_view const value = detail::viewOf(get(name));
    return !value.empty() && detail::isDigit(value.front()) ? detail::toInt(value) : def;
}

float Resrc::get(char const * name, float def) const
{
    std::string_view const value = detail::viewOf(get(name));
    return !value.empty() && detail::isDigit(value.front()) ? detail::toFloat(value) : def;
}

bool Resrc::getBool(char const * name) const
{
    char const * const value = get(name);
    if (value == nullptr)
        return false;
    for (std::string_view const word : FALSE_WORDS)
        if (detail::sameIgnoringCase(value, word))
            return false;
    return true;
}

int Resrc::getType(char const * name) const
{
    Entry const * const entry = find(name);
    return entry != nullptr ? entry->type : NONE;
}

int Resrc::scanf(char const * name, char const * format, ...) const
{
    Entry const * const entry = find(name);
    if (entry == nullptr)
        return 0;
    std::va_list list;
    va_start(list, format);
    detail::VarArgs args(list);
    va_end(list);
    return detail::vscan(entry->value.value_or(""), format, args);
}

int Resrc::rewind()
{
    cursor = entries.empty() ? END : 0;
    return 1;
}

char const * Resrc::getNext()
{
    if (cursor >= entries.size())
        return nullptr;
    Entry const & entry = entries[cursor];
    cursor = cursor + 1 < entries.size() ? cursor + 1 : END;
    return entry.name.c_str();
}

int Resrc::getValues(String & name, String & value, int next)
{
    if (next == 0)
        rewind();
    if (cursor >= entries.size())
        return 0;
    Entry const & entry = entries[cursor];
    name.set(getNext());
    value.set(entry.value ? entry.value->c_str() : "");
    return 1;
}

int Resrc::print(char const * name) const
{
    char const * const value = get(name);
    if (value == nullptr)
        detail::writeOut(detail::format("%s: not set\n", name != nullptr ? name : ""));
    else
        detail::writeOut(detail::format("%s: %s\n", name, value));
    return 1;
}

int Resrc::printAll() const
{
    std::string listing;
    for (Entry const & entry : entries)
        listing.append(entry.name).append(tagOf(entry.type)).append(entry.value.value_or("")).append("\n");
    detail::writeOut(listing);
    return 1;
}

} // namespace Yul
