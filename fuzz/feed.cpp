// Bulletin feeds: the first line is an index file with ";" for newlines, the second a heading pattern and an
// identifier filter, the rest the feed.
#include "MemoryFile.h"
#include "core/String.h"
#include "core/Yul.h"
#include "surface/WmoParse.h"
#include "surface/WmoProduct.h"

#include <algorithm>
#include <string>

namespace {

std::string takeLine(std::string & text)
{
    std::size_t const end = std::min(text.find('\n'), text.size());
    std::string const line = text.substr(0, end);
    text.erase(0, std::min(end + 1, text.size()));
    return line;
}

void readAll(Yul::WmoParse & feed)
{
    Yul::String line;
    while (feed.getLine(line) != 0)
        static_cast<void>(feed.checkZone(line.get(), "WIZ064"));
}

std::uint8_t const * octets(std::string const & text)
{
    return reinterpret_cast<std::uint8_t const *>(text.data());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string text(reinterpret_cast<char const *>(data), size);
    std::string index = takeLine(text);
    std::replace(index.begin(), index.end(), ';', '\n');
    std::string const filters = takeLine(text);
    std::size_t const blank = std::min(filters.find(' '), filters.size());
    MemoryFile const index_file(octets(index), index.size());
    MemoryFile const feed_file(octets(text), text.size());

    Yul::Yul::setMessageLevel(Yul::Yul::ERROR);
    Yul::WmoParse feed;
    feed.setHeader(filters.substr(0, blank).c_str());
    feed.setId(filters.substr(std::min(blank + 1, filters.size())).c_str());
    feed.open(feed_file.name().c_str());
    readAll(feed);

    feed.open(Yul::Filename(feed_file.name().c_str(), index_file.name().c_str()));
    readAll(feed);
    feed.setParam("dollar,blank");
    feed.rewind();
    Yul::WmoProduct product;
    while (feed.peek(product) != 0) {
    }
    feed.setLoc(3);
    readAll(feed);
    return 0;
}
