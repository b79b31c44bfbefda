// Positions, domains and their texts, stations.
#include "geo/CityFile.h"
#include "geo/Domain.h"
#include "geo/DomainTool.h"
#include "geo/EarthRange.h"
#include "python/bind/Bind.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace Yul::python {

namespace {

/// A conversion of whole arrays.
template <class Real>
using Converted =
    std::size_t(std::span<Real const>, std::span<Real const>, std::span<Real>, std::span<Real>) const;

/// Latitudes and longitudes of all grid points, shape (2, ny, nx); without dimensions where there is no grid.
ArrayView viewEarth(Domain const & domain)
{
    // A field of more points than this is not a field; the domain's counts come from anywhere.
    constexpr std::size_t MOST = std::size_t{1} << 28;
    auto const nx = static_cast<std::size_t>(domain.getNx() > 0 ? domain.getNx() : 0);
    auto const ny = static_cast<std::size_t>(domain.getNy() > 0 ? domain.getNy() : 0);
    if (nx == 0 || ny == 0 || nx > MOST / ny)
        return {};
    auto const values = std::make_shared<std::vector<float>>(2 * nx * ny);
    std::span<float> const all(*values);
    if (domain.calcEarth(all.first(nx * ny), all.last(nx * ny)) == 0)
        return {};
    return {std::shared_ptr<void>(values, values->data()),
            "f",
            sizeof(float),
            {2, static_cast<Py_ssize_t>(ny), static_cast<Py_ssize_t>(nx)}};
}

} // namespace

void bindRect(Module & m)
{
    Class<Rect>(m, "Rect")
        .constructor<>()
        .constructor<float, float, float, float>()
        .constructor<Rect const &>()
        .method("set", &Rect::set)
        .method("setu", &Rect::setu)
        .method("getWidth", &Rect::getWidth)
        .method("getHeight", &Rect::getHeight)
        .member("x1", &Rect::x1)
        .member("y1", &Rect::y1)
        .member("x2", &Rect::x2)
        .member("y2", &Rect::y2);
}

void bindEarthPoint(Module & m)
{
    Class<EarthPoint>(m, "EarthPoint")
        .constructor<>()
        .constructor<float, float>()
        .constructor<EarthPoint const &>()
        .method("set", &EarthPoint::set)
        .method("getLat", &EarthPoint::getLat)
        .method("getLon", &EarthPoint::getLon)
        .method("isSet", &EarthPoint::isSet)
        .member("lat", &EarthPoint::lat)
        .member("lon", &EarthPoint::lon);
}

void bindEarthRange(Module & m)
{
    Class<EarthRange>(m, "EarthRange")
        .constructor<>()
        .constructor<float, float, float, float>()
        .constructor<EarthRange const &>()
        .method("set", overload<int(float, float, float, float)>(&EarthRange::set),
                overload<int(EarthPoint const &, EarthPoint const &)>(&EarthRange::set))
        .method("isSet", &EarthRange::isSet)
        .method("within", &EarthRange::within)
        .member("lat1", &EarthRange::lat1)
        .member("lon1", &EarthRange::lon1)
        .member("lat2", &EarthRange::lat2)
        .member("lon2", &EarthRange::lon2);
}

void bindEarthPoints(Module & m)
{
    Class<EarthPoints>(m, "EarthPoints")
        .constructor<>()
        .constructor<EarthPoints const &>()
        .method("add", &EarthPoints::add)
        .method("clear", &EarthPoints::clear)
        .method("getNum", &EarthPoints::getNum)
        .item<&EarthPoints::get>("get");
}

void bindGridPoint(Module & m)
{
    Class<GridPoint>(m, "GridPoint")
        .constructor<>()
        .constructor<float, float>()
        .constructor<GridPoint const &>()
        .method("set", &GridPoint::set)
        .method("getX", &GridPoint::getX)
        .method("getY", &GridPoint::getY)
        .method("isSet", &GridPoint::isSet)
        .member("x", &GridPoint::x)
        .member("y", &GridPoint::y);
}

void bindGridPoints(Module & m)
{
    Class<GridPoints>(m, "GridPoints")
        .constructor<>()
        .constructor<GridPoints const &>()
        .method("add", &GridPoints::add)
        .method("clear", &GridPoints::clear)
        .method("getNum", &GridPoints::getNum)
        .item<&GridPoints::get>("get");
}

void bindPoint(Module & m)
{
    Class<Point>(m, "Point")
        .constructor<>()
        .constructor<float, float>()
        .constructor<Point const &>()
        .method("set", &Point::set)
        .method("getX", &Point::getX)
        .method("getY", &Point::getY)
        .method("isSet", &Point::isSet)
        .member("x", &Point::x)
        .member("y", &Point::y);
}

void bindPoints(Module & m)
{
    Class<Points>(m, "Points")
        .constructor<>()
        .constructor<Points const &>()
        .method("add", &Points::add)
        .method("clear", &Points::clear)
        .method("getNum", &Points::getNum)
        .item<&Points::get>("get");
}

void bindCityData(Module & m)
{
    Class<CityData>(m, "CityData")
        .constructor<>()
        .constructor<CityData const &>()
        .method("getId", &CityData::getId)
        .method("getName", &CityData::getName)
        .method("getCountry", &CityData::getCountry)
        .method("getLocation", &CityData::getLocation)
        .method("getLat", &CityData::getLat)
        .method("getLon", &CityData::getLon)
        .method("getElev", &CityData::getElev)
        .member("id", &CityData::id)
        .member("name", &CityData::name)
        .member("country", &CityData::country)
        .member("location", &CityData::location)
        .member("elevation", &CityData::elevation);
}

void bindCityFile(Module & m)
{
    Class<CityFile>(m, "CityFile")
        .constructor<>()
        .constructor<char const *>()
        .method("open", &CityFile::open)
        .method("getNum", &CityFile::getNum)
        .method("get", &CityFile::get)
        .method("find", &CityFile::find);
}

void bindRange(Module & m)
{
    Class<Range>(m, "Range")
        .constructor<>()
        .constructor<float, float>()
        .constructor<Range const &>()
        .method("set", &Range::set)
        .method("getMin", &Range::getMin)
        .method("getMax", &Range::getMax)
        .member("min", &Range::min)
        .member("max", &Range::max);
}

void bindDomainVal(Module & m)
{
    Class<DomainVal>(m, "DomainVal")
        .constructor<>()
        .constructor<DomainVal const &>()
        .method("init", &DomainVal::init)
        .method("isMiss", &DomainVal::isMiss)
        .method("isMap", &DomainVal::isMap)
        .method("getParam", &DomainVal::getParam)
        .method("setParam", &DomainVal::setParam)
        .method("scaleSize", &DomainVal::scaleSize)
        .method("toString", &DomainVal::toString)
        .print(&DomainVal::print)
        .method("compare", &DomainVal::compare)
        .method("compareProj", &DomainVal::compareProj)
        .member("proj", &DomainVal::proj)
        .member("plat", &DomainVal::plat)
        .member("plon", &DomainVal::plon)
        .member("param", &DomainVal::param)
        .member("clat", &DomainVal::clat)
        .member("clon", &DomainVal::clon)
        .member("dx", &DomainVal::dx)
        .member("dy", &DomainVal::dy)
        .member("nx", &DomainVal::nx)
        .member("ny", &DomainVal::ny)
        .member("ellipse", &DomainVal::ellipse);
}

void bindDomain(Module & m)
{
    Class<Domain>(m, "Domain")
        .constants({
            {"UNKNOWN", Domain::UNKNOWN}, {"PSTEREO", Domain::PSTEREO}, {"LATLON", Domain::LATLON},
            {"MERC", Domain::MERC},       {"LAMB", Domain::LAMB},       {"ORTHO", Domain::ORTHO},
            {"GNOM", Domain::GNOM},       {"MOLL", Domain::MOLL},       {"LAMBAZ", Domain::LAMBAZ},
            {"ALBERS", Domain::ALBERS},   {"SAT", Domain::SAT},         {"RADIAL", Domain::RADIAL},
            {"PIXEL", Domain::PIXEL},     {"XY", Domain::XY},           {"XZ", Domain::XZ},
            {"XP", Domain::XP},           {"XLOGP", Domain::XLOGP},     {"POLAR", Domain::POLAR},
            {"CAT", Domain::CAT},         {"SKEWT", Domain::SKEWT},     {"STUVE", Domain::STUVE},
            {"EMA", Domain::EMA},         {"TEPH", Domain::TEPH},       {"RTEPH", Domain::RTEPH},
            {"ZOOM", Domain::ZOOM},       {"SIZE", Domain::SIZE},
        })
        .constants({
            {"INSIDE", Domain::INSIDE},
            {"LEFT", Domain::LEFT},
            {"RIGHT", Domain::RIGHT},
            {"BELOW", Domain::BELOW},
            {"ABOVE", Domain::ABOVE},
        })
        .variable("earth_rad", &Domain::earth_rad)
        .variable("earth_maj", &Domain::earth_maj)
        .variable("earth_min", &Domain::earth_min)
        .variable("OFFSET_LL", &Domain::OFFSET_LL)
        .variable("OFFSET_MERC", &Domain::OFFSET_MERC)
        .constructor<>()
        .constructor<char const *>()
        .constructor<DomainVal const &>()
        .constructor<Domain const &>()
        .method("init", &Domain::init)
        .method("set", overload<int(char const *)>(&Domain::set),
                overload<int(DomainVal const &)>(&Domain::set),
                overload<int(EarthPoint const &, EarthPoint const &, int, int)>(&Domain::set),
                overload<int(int, int)>(&Domain::set))
        .method("get", &Domain::get)
        .method("setParam", &Domain::setParam)
        .method("setLimits", &Domain::setLimits)
        .method("setView", &Domain::setView)
        .method("getLimits", &Domain::getLimits)
        .method("getView", &Domain::getView)
        .method("getNx", &Domain::getNx)
        .method("getNy", &Domain::getNy)
        .method("getDx", &Domain::getDx)
        .method("getDy", &Domain::getDy)
        .method("getAspect", &Domain::getAspect)
        .method("getVert", &Domain::getVert)
        .method("isMap", &Domain::isMap)
        .method("isMiss", &Domain::isMiss)
        .method("getStdLat", &Domain::getStdLat)
        .staticMethod("satelliteDistance", &Domain::satelliteDistance)
        .method("viewEarth", viewEarth)
        .method("calcEarth", &Domain::calcEarth)
        .method("calcPlane", &Domain::calcPlane)
        .staticOrMethod<&Domain::getProj>("getProj")
        .method("tran", overload<int(EarthPoint const &, Point &) const>(&Domain::tran),
                overload<int(Point const &, EarthPoint &) const>(&Domain::tran),
                overload<int(GridPoint const &, Point &) const>(&Domain::tran),
                overload<int(Point const &, GridPoint &) const>(&Domain::tran),
                overload<int(EarthPoint const &, GridPoint &) const>(&Domain::tran),
                overload<int(GridPoint const &, EarthPoint &) const>(&Domain::tran),
                overload<int(int, EarthPoint &) const>(&Domain::tran),
                overload<int(int, GridPoint &) const>(&Domain::tran),
                overload<int(int, Point &) const>(&Domain::tran),
                overload<int(EarthPoints const &, Points &) const>(&Domain::tran),
                overload<int(EarthPoints const &, GridPoints &) const>(&Domain::tran),
                overload<int(Points const &, EarthPoints &) const>(&Domain::tran),
                overload<int(Points const &, GridPoints &) const>(&Domain::tran),
                overload<int(GridPoints const &, EarthPoints &) const>(&Domain::tran),
                overload<int(GridPoints const &, Points &) const>(&Domain::tran))
        .method("forward", overload<Converted<float>>(&Domain::forward),
                overload<Converted<double>>(&Domain::forward))
        .method("inverse", overload<Converted<float>>(&Domain::inverse),
                overload<Converted<double>>(&Domain::inverse))
        .method("locate", &Domain::locate)
        .method("within", overload<int(Point const &) const>(&Domain::within),
                overload<int(EarthPoint const &) const>(&Domain::within))
        .method("withinExt", &Domain::withinExt)
        .method("where", &Domain::where)
        .method("translate", overload<int(Domain const &, Point const &, Point &) const>(&Domain::translate),
                overload<int(Domain const &, GridPoint const &, GridPoint &) const>(&Domain::translate))
        .method("adjust", overload<int(Point &) const>(&Domain::adjust),
                overload<int(Points &) const>(&Domain::adjust))
        .method("adjustDir", overload<float(float, EarthPoint const &) const>(&Domain::adjustDir),
                overload<float(float, Point const &) const>(&Domain::adjustDir))
        .method("unadjustDir", overload<float(float, EarthPoint const &) const>(&Domain::unadjustDir),
                overload<float(float, Point const &) const>(&Domain::unadjustDir))
        .method("getMapFactor", &Domain::getMapFactor)
        .staticOrMethod<&Domain::calcEarthDist>("calcEarthDist")
        .method("scaleSize", &Domain::scaleSize)
        .method("scaleGrid", &Domain::scaleGrid)
        .method("zoom", overload<int(Point const &, float)>(&Domain::zoom),
                overload<int(EarthPoint const &, float)>(&Domain::zoom))
        .method("pan", overload<int(Point const &)>(&Domain::pan),
                overload<int(EarthPoint const &)>(&Domain::pan))
        .method("offset", &Domain::offset)
        .method("offsetLatLon", &Domain::offsetLatLon)
        .method("seamWidth", &Domain::seamWidth)
        .method("wrapLine", overload<int(Points const &, Points &) const>(&Domain::wrapLine),
                overload<int(Point const &, Point const &, Point &, Point &) const>(&Domain::wrapLine))
        .method("offsetLine", &Domain::offsetLine)
        .method("toString", &Domain::toString)
        .print(&Domain::print)
        .method("printLimits", &Domain::printLimits)
        .method("compare", &Domain::compare)
        .method("compareProj", &Domain::compareProj);
}

void bindDomainTool(Module & m)
{
    Class<DomainTool>(m, "DomainTool")
        .constructor<>()
        .staticMethod("proj", &DomainTool::proj)
        .staticMethod("setParam", &DomainTool::setParam)
        .staticMethod("setParams", &DomainTool::setParams)
        .staticMethod(
            "decode", overload<int(char const *, DomainVal &, char const *)>(&DomainTool::decode),
            overload<int(char const *, Domain &, char const *)>(&DomainTool::decode),
            [](char const * text, DomainVal & val) { return DomainTool::decode(text, val); },
            [](char const * text, Domain & domain) { return DomainTool::decode(text, domain); })
        .staticMethod("set", overload<int(Domain &, char const *)>(&DomainTool::set),
                      overload<int(Domain &)>(&DomainTool::set));
}

} // namespace Yul::python
