// Bulletin feeds: the first line is a heading pattern and an identifier filter, the rest the feed. Line by line and
// bulletin by bulletin have to give the same text.
#include "MemoryFile.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "core/Yul.h"
#include "surface/WmoParse.h"
#include "surface/WmoProduct.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace {

/// Adds a line without what bulletins leave out: its end, ETX, blanks.
void addText(std::string & all, std::string_view line)
{
    line = Yul::detail::trimmed(line);
    while (!line.empty() && line.back() == '\x03')
        line = Yul::detail::trimmed(line.substr(0, line.size() - 1));
    if (!line.empty())
        all += std::string(line) + '\n';
}

std::string byLine(Yul::WmoParse & feed)
{
    std::string all;
    Yul::String line;
    while (feed.getLine(line) != 0)
        addText(all, line.view());
    return all;
}

std::string byBulletin(Yul::WmoParse & feed)
{
    std::string all;
    Yul::WmoProduct product;
    while (feed.getProduct(product) != 0)
        for (std::string_view const line : Yul::detail::split(product.view(), '\n'))
            addText(all, line);
    return all;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    std::string const filters = text.substr(0, text.find('\n'));
    std::size_t const begin = std::min(filters.size() + 1, size);
    MemoryFile const file(data + begin, size - begin);

    Yul::Yul::setMessageLevel(Yul::Yul::ERROR);
    Yul::WmoParse feed;
    feed.open(file.name().c_str());
    std::string const whole = byLine(feed);
    feed.rewind();
    if (byBulletin(feed) != whole)
        std::abort();

    std::size_t const blank = std::min(filters.find(' '), filters.size());
    feed.setHeader(filters.substr(0, blank).c_str());
    feed.setId(filters.substr(std::min(blank + 1, filters.size())).c_str());
    feed.setParam("dollar,blank");
    feed.setExpectId(size % 2 == 0);
    feed.rewind();
    byBulletin(feed);
    feed.seek(3);
    byLine(feed);
    return 0;
}
