// Index files: the input is an index of a small feed. A listed bulletin that is there is found.
#include "MemoryFile.h"
#include "core/String.h"
#include "core/Yul.h"
#include "surface/WmoParse.h"
#include "surface/WmoProduct.h"

#include <string>
#include <vector>

namespace {

constexpr std::string_view FEED =
    "\x01\r\r\n001 \r\r\nSAUS70 KWBC 060000\r\r\nMTRDEN\r\r\nKDEN 060053Z=\r\r\n"
    "\x03\x01\r\r\n002 \r\r\nWWUS53 KMKX 060000\r\r\nSVRMKX\r\r\nWIZ063-064-\r\r\n\x03";

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    MemoryFile const feed_file(reinterpret_cast<std::uint8_t const *>(FEED.data()), FEED.size());
    MemoryFile const index_file(data, size);
    Yul::Yul::setMessageLevel(Yul::Yul::ERROR);
    Yul::WmoParse feed;
    feed.open(Yul::Filename(feed_file.name().c_str(), index_file.name().c_str()));
    Yul::String line;
    while (feed.getLine(line) != 0) {
    }
    feed.rewind();
    feed.setHeader("S");
    Yul::WmoProduct product;
    std::vector<long> places;
    while (feed.peek(product) != 0)
        places.push_back(product.getLoc());
    for (long const place : places)
        if (feed.setLoc(place) != 0)
            feed.getLine(line);
    feed.rewind();
    while (feed.getProduct(product) != 0) {
    }
    return 0;
}
