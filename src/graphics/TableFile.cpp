#include "graphics/TableFile.h"

#include "core/File.h"
#include "core/FileTool.h"
#include "core/Number.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "core/Yul.h"

#include <array>
#include <charconv>
#include <cmath>

namespace Yul::detail {
namespace {

constexpr std::size_t MAX_OCTETS = 4U << 20;
constexpr std::size_t BLOCK = 16U << 10;

template <class Number> bool readNumber(std::string_view word, Number & value)
{
    Number read{};
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), read);
    if (error != std::errc{} || end != word.data() + word.size())
        return false;
    value = read;
    return true;
}

} // namespace

int TableFile::open(std::string const & name)
{
    text.clear();
    position = 0;
    File file;
    if (file.openRegular(name.c_str()) == 0)
        return 0;
    std::array<char, BLOCK> block;
    while (text.size() <= MAX_OCTETS) {
        std::size_t const count = file.read(block.data(), block.size());
        if (count == 0)
            return text.find('\0') == std::string::npos ? 1 : 0;
        text.append(block.data(), count);
    }
    return 0;
}

bool TableFile::next(std::string_view & line)
{
    std::string_view const all = text;
    while (position < all.size()) {
        std::size_t const end = std::min(all.find('\n', position), all.size());
        line = trimmed(all.substr(position, end - position));
        position = end + 1;
        if (!line.empty() && line.front() != '#')
            return true;
    }
    return false;
}

std::string_view nextWord(std::string_view & rest)
{
    std::size_t first = 0;
    while (first < rest.size() && isBlank(rest[first]))
        ++first;
    std::size_t last = first;
    while (last < rest.size() && !isBlank(rest[last]))
        ++last;
    std::string_view const word = rest.substr(first, last - first);
    rest.remove_prefix(last);
    return word;
}

std::vector<std::string_view> words(std::string_view line)
{
    constexpr std::size_t USUAL = 16;
    std::vector<std::string_view> found;
    found.reserve(USUAL);
    for (auto word = nextWord(line); !word.empty(); word = nextWord(line))
        found.push_back(word);
    return found;
}

bool readInt(std::string_view word, int & value)
{
    return readNumber(word, value);
}

bool readFloat(std::string_view word, float & value)
{
    float read = 0;
    if (!readNumber(word, read) || !std::isfinite(read))
        return false;
    value = read;
    return true;
}

std::string databaseFile(std::string_view name)
{
    String path;
    FileTool::addPath(Yul::getDatabasePath(), std::string(name).c_str(), path);
    return path.get();
}

} // namespace Yul::detail
