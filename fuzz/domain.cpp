// Domain texts, and conversions in the domains that they make: the first line is a text, the others are a file of
// regions whose entries are decoded one behind the other.
#include "geo/Domain.h"

#include "core/String.h"
#include "core/Yul.h"
#include "geo/DomainTool.h"
#include "geo/LookupFile.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace Yul {
namespace {

/// Stops the run: a property does not hold.
void require(bool holds)
{
    if (!holds)
        std::abort();
}

void convert(Domain const & domain)
{
    EarthPoints lattice;
    for (float lat = -100; lat <= 100; lat += 20)
        for (float lon = -4000; lon <= 4000; lon += 250)
            lattice.add(EarthPoint(lat, lon));
    Points points;
    GridPoints grid;
    EarthPoints back;
    domain.tran(lattice, points);
    domain.tran(points, back);
    domain.tran(points, grid);
    for (int i = 0; i < lattice.getNum(); ++i) {
        Point point;
        require(domain.tran(lattice.get(i), point) == points.get(i).isSet());
        require(point.x == points.get(i).x && point.y == points.get(i).y);
        require(!back.get(i).isSet() || !domain.isMap() ||
                (back.get(i).lat >= -90.001F && back.get(i).lat <= 90.001F));
        require(domain.adjustDir(5, lattice.get(i)) <= 360);
        require(domain.within(point) == 0 || domain.where(point) == Domain::INSIDE);
    }
    domain.wrapLine(points, points);
    domain.offsetLine(points);
}

void decode(std::string const & text, Domain & domain)
{
    if (DomainTool::decode(text.c_str(), domain) == 0) {
        require(domain.isMiss());
        return;
    }
    convert(domain);
    DomainVal const & val = domain.get();
    String written;
    DomainVal back;
    bool const is_whole = val.isMap() && val.clat != Const::MISS && val.clon != Const::MISS &&
                          val.nx != Const::MISS && val.ny != Const::MISS && val.dx != Const::MISS &&
                          val.dy != Const::MISS;
    val.toString(written);
    require(!is_whole || DomainTool::decode(written.get(), back) != 0);
}

void decodeAll(std::string const & input)
{
    Yul::setMessageLevel(Yul::ERROR);
    Domain::earth_rad = Const::EARTH;
    std::size_t const line = input.find('\n');
    Domain domain;
    decode(input.substr(0, line), domain);
    if (line == std::string::npos)
        return;
    detail::LookupFile const regions(input.substr(line + 1), ':');
    for (auto const & region : regions.entries()) {
        require(regions.find(region.key) != nullptr);
        decode(std::string(region.value), domain);
    }
}

} // namespace
} // namespace Yul

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Yul::decodeAll(std::string(reinterpret_cast<char const *>(data), size));
    return 0;
}
