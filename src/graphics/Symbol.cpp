#include "graphics/Symbol.h"

#include "core/Const.h"
#include "core/StrLib.h"
#include "graphics/TableFile.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace Yul {
namespace {

constexpr std::string_view MAGIC = "YulSymbols 1";
constexpr float UNIT = 100; // file units of half a symbol
constexpr float MAX_COORDINATE = 1000;
constexpr std::size_t MAX_VERTICES = 1U << 18;
constexpr float DEGREES_A_STEP = 15;
constexpr float FULL_CIRCLE = 360;

/// The words from `first` on as numbers; empty when one is none or beyond the limit.
std::vector<float> numbers(std::vector<std::string_view> const & words, std::size_t first)
{
    std::vector<float> values(words.size() - std::min(first, words.size()));
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!detail::readFloat(words[first + i], values[i]) || std::abs(values[i]) > MAX_COORDINATE)
            return {};
    return values;
}

Symbol::Vertex unitVertex(float x, float y)
{
    return {x / UNIT, y / UNIT};
}

/// A line through pairs of coordinates.
std::vector<Symbol::Vertex> path(std::vector<float> const & values)
{
    std::vector<Symbol::Vertex> vertices;
    for (std::size_t i = 0; i + 1 < values.size(); i += 2)
        vertices.push_back(unitVertex(values[i], values[i + 1]));
    return vertices;
}

/// An arc about (x, y), degrees counterclockwise from east; it may run either way.
std::vector<Symbol::Vertex> arc(float x, float y, float radius, float from, float to)
{
    int const steps = std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / DEGREES_A_STEP)));
    std::vector<Symbol::Vertex> vertices;
    for (int i = 0; i <= steps; ++i) {
        double const angle =
            (from + (to - from) * static_cast<float>(i) / static_cast<float>(steps)) * Const::PI / 180;
        vertices.push_back(unitVertex(static_cast<float>(x + radius * std::cos(angle)),
                                      static_cast<float>(y + radius * std::sin(angle))));
    }
    return vertices;
}

/// The same part at another size and place.
Symbol::Part transformed(Symbol::Part part, float dx, float dy, float scale)
{
    for (Symbol::Vertex & vertex : part.vertices)
        vertex = {vertex.x * scale + dx / UNIT, vertex.y * scale + dy / UNIT};
    return part;
}

/// One drawing line of the file; none when it is not one.
std::optional<Symbol::Part> parsePart(std::vector<std::string_view> const & words)
{
    std::string_view const kind = words[0];
    auto const v = numbers(words, 1);
    if ((kind == "line" || kind == "fill") && v.size() >= 4 && v.size() % 2 == 0)
        return Symbol::Part{kind == "fill", path(v)};
    if ((kind == "circle" || kind == "disc") && v.size() == 3)
        return Symbol::Part{kind == "disc", arc(v[0], v[1], v[2], 0, FULL_CIRCLE)};
    if ((kind != "arc" && kind != "sector" && kind != "segment") || v.size() != 5)
        return std::nullopt;
    Symbol::Part part{kind != "arc", arc(v[0], v[1], v[2], v[3], v[4])};
    if (kind == "sector")
        part.vertices.push_back(unitVertex(v[0], v[1]));
    return part;
}

} // namespace

/// Fills a symbol set line by line.
struct Symbol::Reader
{
    Symbol & set;
    std::size_t num_vertices = 0;

    /// False for a line that has no place in a symbol file.
    bool take(std::string_view line)
    {
        auto const words = detail::words(line);
        if (words[0] == "symbol")
            return takeNames(words);
        if (set.shapes.empty())
            return false;
        if (words[0] == "use")
            return takeParts(words);
        auto part = parsePart(words);
        return part && add(std::move(*part));
    }

    bool takeNames(std::vector<std::string_view> const & words)
    {
        set.shapes.emplace_back();
        for (std::size_t i = 1; i < words.size(); ++i)
            if (!set.index.emplace(std::string(words[i]), set.shapes.size() - 1).second)
                return false;
        if (words.size() > 1)
            set.names.emplace_back(words[1]);
        return words.size() > 1;
    }

    /// All parts of a symbol that came before, scaled and moved.
    bool takeParts(std::vector<std::string_view> const & words)
    {
        auto const found = words.size() > 1 ? set.index.find(words[1]) : set.index.end();
        auto v = numbers(words, 2);
        if (found == set.index.end() || found->second + 1 == set.shapes.size() ||
            words.size() != v.size() + 2 || v.size() == 1 || v.size() > 3)
            return false;
        v.resize(3, v.size() == 2 ? 1.0F : 0.0F);
        float const scale = words.size() == 2 ? 1 : v[2];
        for (Part const & part : set.shapes[found->second]) // never the symbol that grows
            if (!add(transformed(part, v[0], v[1], scale)))
                return false;
        return true;
    }

    bool add(Part part)
    {
        num_vertices += part.vertices.size();
        set.shapes.back().push_back(std::move(part));
        return num_vertices <= MAX_VERTICES;
    }
};

int Symbol::open(char const * name)
{
    detail::TableFile file;
    std::string_view line;
    if (name == nullptr || file.open(name) == 0 || !file.next(line) || line != MAGIC)
        return 0;
    Symbol next; // filled first: a damaged file leaves the set as it was
    Reader reader{next};
    while (file.next(line))
        if (!reader.take(line))
            return 0;
    if (!next.isOpen())
        return 0;
    *this = std::move(next);
    return 1;
}

int Symbol::close()
{
    *this = Symbol();
    return 1;
}

Symbol::Shape const * Symbol::find(char const * name) const
{
    auto const found = index.find(detail::viewOf(name));
    return found != index.end() ? &shapes[found->second] : nullptr;
}

char const * Symbol::getName(int i) const
{
    return i >= 0 && static_cast<std::size_t>(i) < names.size() ? names[static_cast<std::size_t>(i)].c_str()
                                                                : nullptr;
}

} // namespace Yul
