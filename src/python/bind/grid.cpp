// Fields and what identifies them: units, levels, variables, grid specs, grids.
#include "grid/Grid.h"

#include "grid/GridSpec.h"
#include "grid/Grids.h"
#include "grid/Level.h"
#include "grid/Unit.h"
#include "grid/VarName.h"
#include "grid/Variable.h"
#include "python/bind/Bind.h"

#include <memory>

namespace Yul::python {
namespace {

/// The library's; the frame has a class of that name too.
using GridVariable = ::Yul::Variable;

/// The live values, row by row from the north.
ArrayView viewOf(Grid const & grid)
{
    auto const values = grid.shareData();
    if (values == nullptr)
        return {};
    return {.data = std::shared_ptr<void>(values, values.get()), .shape = {grid.getNy(), grid.getNx()}};
}

} // namespace

void bindUnit(Module & m)
{
    Class<Unit>(m, "Unit")
        .constructor<>()
        .constructor<char const *, char const *>()
        .constructor<Unit const &>()
        .method("set", overload<int(char const *, char const *)>(&Unit::set),
                overload<int(double, double)>(&Unit::set))
        .method("isValid", &Unit::isValid)
        .method("getFactor", &Unit::getFactor)
        .method("getOffset", &Unit::getOffset)
        .method("convert", overload<float(float) const>(&Unit::convert))
        .staticMethod("convertValue", overload<float(float, char const *, char const *)>(&Unit::convert))
        .staticMethod("isKnown", &Unit::isKnown);
}

void bindLevel(Module & m)
{
    Class<Level>(m, "Level")
        .constants({
            {"NONE", Level::NONE},
            {"SFC", Level::SFC},
            {"CLOUD_BASE", Level::CLOUD_BASE},
            {"CLOUD_TOP", Level::CLOUD_TOP},
            {"ZERO_DEG", Level::ZERO_DEG},
            {"LCL", Level::LCL},
            {"MAX_WIND", Level::MAX_WIND},
            {"TROP", Level::TROP},
            {"TOA", Level::TOA},
            {"SEA_BOTTOM", Level::SEA_BOTTOM},
            {"ATMOS", Level::ATMOS},
            {"ISOTHERM", Level::ISOTHERM},
            {"PRES", Level::PRES},
            {"MSL", Level::MSL},
            {"HGT_MSL", Level::HGT_MSL},
            {"HGT", Level::HGT},
            {"SIGMA", Level::SIGMA},
            {"HYBRID", Level::HYBRID},
            {"DEPTH", Level::DEPTH},
            {"THETA", Level::THETA},
            {"PRES_GND", Level::PRES_GND},
            {"PV", Level::PV},
            {"ETA", Level::ETA},
            {"SNOW", Level::SNOW},
            {"SOIL", Level::SOIL},
            {"DEPTH_SEA", Level::DEPTH_SEA},
            {"OCEAN", Level::OCEAN},
            {"FREEZE_HIGH", Level::FREEZE_HIGH},
            {"BL_CLOUD", Level::BL_CLOUD},
            {"LOW_CLOUD", Level::LOW_CLOUD},
            {"CEILING", Level::CEILING},
            {"PBL", Level::PBL},
            {"MID_CLOUD", Level::MID_CLOUD},
            {"HIGH_CLOUD", Level::HIGH_CLOUD},
            {"CONV_CLOUD", Level::CONV_CLOUD},
        })
        .constructor<>()
        .constructor<char const *>()
        .constructor<int, float>()
        .constructor<int, float, float>()
        .constructor<Level const &>()
        .method("init", &Level::init)
        .method("set", overload<int(int)>(&Level::set), overload<int(int, float)>(&Level::set),
                overload<int(int, float, float)>(&Level::set), overload<int(Level const &)>(&Level::set),
                overload<int(char const *)>(&Level::set))
        .method("decode", &Level::decode)
        .method("setGrib1", &Level::setGrib1)
        .method("getGrib1", &Level::getGrib1)
        .method("setGrib2", &Level::setGrib2)
        .method("getGrib2", &Level::getGrib2)
        .method("getTypeCode", &Level::getTypeCode)
        .method("getValueCode", &Level::getValueCode)
        .method("setCodes", &Level::setCodes)
        .method("isSet", &Level::isSet)
        .method("isLayer", &Level::isLayer)
        .method("isKnown", &Level::isKnown)
        .method("getType", &Level::getType)
        .method("getValue", &Level::getValue)
        .method("getValue2", &Level::getValue2)
        .method("getUnits", &Level::getUnits)
        .method("toString", &Level::toString)
        .method("toLabel", &Level::toLabel)
        .method("compare", &Level::compare)
        .print(&Level::print);
}

void bindVariable(Module & m)
{
    Class<GridVariable>(m, "Variable")
        .constructor<>()
        .constructor<char const *>()
        .constructor<int>()
        .constructor<GridVariable const &>()
        .method("init", &GridVariable::init)
        .method("set", overload<int(char const *)>(&GridVariable::set),
                overload<int(int)>(&GridVariable::set),
                overload<int(VarNameItem const &)>(&GridVariable::set),
                overload<int(GridVariable const &)>(&GridVariable::set),
                overload<int(char const *, char const *, char const *, int)>(&GridVariable::set))
        .method("decode", &GridVariable::decode)
        .method("setGrib1", &GridVariable::setGrib1)
        .method("setGrib2", &GridVariable::setGrib2)
        .method("setUnits", &GridVariable::setUnits)
        .method("isSet", &GridVariable::isSet)
        .method("getName", &GridVariable::getName)
        .method("getLongName", &GridVariable::getLongName)
        .method("getUnits", &GridVariable::getUnits)
        .method("getIndex", &GridVariable::getIndex)
        .method("toString", &GridVariable::toString)
        .method("compare", &GridVariable::compare)
        .print(&GridVariable::print);
}

void bindVarNameItem(Module & m)
{
    Class<VarNameItem>(m, "VarNameItem")
        .constructor<>()
        .method("getIndex", &VarNameItem::getIndex)
        .method("getName", &VarNameItem::getName)
        .method("getLongName", &VarNameItem::getLongName)
        .method("getUnits", &VarNameItem::getUnits)
        .method("getGrib1", &VarNameItem::getGrib1)
        .method("getDiscipline", &VarNameItem::getDiscipline)
        .method("getCategory", &VarNameItem::getCategory)
        .method("getNumber", &VarNameItem::getNumber)
        // read-only: items of the library's table lie in constant memory
        .readOnly("index", [](VarNameItem const & item) { return item.index; })
        .readOnly("alternate", [](VarNameItem const & item) { return item.alternate; })
        .readOnly("grib1", [](VarNameItem const & item) { return item.grib1; })
        .readOnly("name", [](VarNameItem const & item) { return item.name; })
        .readOnly("long_name", [](VarNameItem const & item) { return item.long_name; })
        .readOnly("units", [](VarNameItem const & item) { return item.units; });
}

void bindVarName(Module & m)
{
    Class<VarName>(m, "VarName")
        .constructor<>()
        .staticMethod("getNum", &VarName::getNum)
        .staticMethod("get", &VarName::get)
        .staticMethod("find", overload<VarNameItem const *(char const *)>(&VarName::find),
                      overload<VarNameItem const *(int)>(&VarName::find))
        .staticMethod("findGrib1", &VarName::findGrib1)
        .staticMethod("findGrib2", &VarName::findGrib2)
        .staticMethod("makeIndex", &VarName::makeIndex)
        .staticPrint(&VarName::print);
}

void bindModelSpec(Module & m)
{
    Class<ModelSpec>(m, "ModelSpec")
        .constructor<>()
        .constructor<char const *>()
        .constructor<int, int>()
        .constructor<ModelSpec const &>()
        .method("init", &ModelSpec::init)
        .method("set", overload<int(char const *)>(&ModelSpec::set), overload<int(int, int)>(&ModelSpec::set),
                overload<int(ModelSpec const &)>(&ModelSpec::set))
        .method("decode", &ModelSpec::decode)
        .method("isSet", &ModelSpec::isSet)
        .method("getSource", &ModelSpec::getSource)
        .method("getModel", &ModelSpec::getModel)
        .method("toString", &ModelSpec::toString)
        .method("match", &ModelSpec::match)
        .print(&ModelSpec::print);
}

void bindGridSpec(Module & m)
{
    Class<GridSpec>(m, "GridSpec")
        .constructor<>()
        .constructor<char const *>()
        .constructor<GridSpec const &>()
        .method("init", &GridSpec::init)
        .method("set", overload<int(char const *)>(&GridSpec::set),
                overload<int(GridSpec const &)>(&GridSpec::set))
        .method("decode", &GridSpec::decode)
        .method("setVar", overload<int(GridVariable const &)>(&GridSpec::setVar),
                overload<int(char const *)>(&GridSpec::setVar))
        .method("setLevel", overload<int(Level const &)>(&GridSpec::setLevel),
                overload<int(char const *)>(&GridSpec::setLevel))
        .method("setForeTime", overload<int(ForeTime const &)>(&GridSpec::setForeTime),
                overload<int(char const *)>(&GridSpec::setForeTime))
        .method("setModel", overload<int(ModelSpec const &)>(&GridSpec::setModel),
                overload<int(char const *)>(&GridSpec::setModel))
        .method("getVar", &GridSpec::getVar)
        .method("getLevel", &GridSpec::getLevel)
        .method("getForeTime", &GridSpec::getForeTime)
        .method("getModel", &GridSpec::getModel)
        .method("isSet", &GridSpec::isSet)
        .method("toString", &GridSpec::toString)
        .method("match", &GridSpec::match)
        .print(&GridSpec::print);
}

void bindGrid(Module & m)
{
    Class<Grid>(m, "Grid")
        .constructor<>()
        .constructor<int, int>()
        .constructor<Grid const &>()
        .method("init", &Grid::init)
        .method("reset", &Grid::reset)
        .method("copy", &Grid::copy)
        .method("copyInfo", &Grid::copyInfo)
        .method("copyData", &Grid::copyData)
        .method("setSize", &Grid::setSize)
        .method("allocData", &Grid::allocData)
        .method("freeData", &Grid::freeData)
        .method("setNz", &Grid::setNz)
        .method("getNz", &Grid::getNz)
        .method("getSize", &Grid::getSize)
        .method("getNx", &Grid::getNx)
        .method("getNy", &Grid::getNy)
        .method("isData", &Grid::isData)
        .method("view", &viewOf)
        .method("setValue", overload<int(int, int, float)>(&Grid::setValue),
                overload<int(float)>(&Grid::setValue))
        .method("getValue", overload<float(int, int) const>(&Grid::getValue),
                overload<float(GridPoint const &) const>(&Grid::getValue),
                overload<float(EarthPoint const &) const>(&Grid::getValue),
                overload<float(Point const &) const>(&Grid::getValue))
        .method("getValues",
                overload<int(std::span<double const>, std::span<double const>, std::span<float>) const>(
                    &Grid::getValues))
        .method("isValue", &Grid::isValue)
        .method("setType", &Grid::setType)
        .method("setSource", &Grid::setSource)
        .method("setVersion", &Grid::setVersion)
        .method("setModel", &Grid::setModel)
        .method("getType", &Grid::getType)
        .method("getSource", &Grid::getSource)
        .method("getVersion", &Grid::getVersion)
        .method("getModel", &Grid::getModel)
        .method("setGenName", &Grid::setGenName)
        .method("getGenName", &Grid::getGenName)
        .method("setDatim", &Grid::setDatim)
        .method("getDatim", &Grid::getDatim)
        .method("setInfo", &Grid::setInfo)
        .method("getInfo", &Grid::getInfo)
        .method("setDate", overload<int(Date const &)>(&Grid::setDate),
                overload<int(DateVal const &)>(&Grid::setDate))
        .method("getDate", &Grid::getDate)
        .method("getDateVal", &Grid::getDateVal)
        .method("getInitDate", &Grid::getInitDate)
        .method("getValidDate", &Grid::getValidDate)
        .method("setDomain", overload<int(Domain const &)>(&Grid::setDomain),
                overload<int(DomainVal const &)>(&Grid::setDomain))
        .method("getDomain", &Grid::getDomain)
        .method("getDomainVal", &Grid::getDomainVal)
        .method("getProj", &Grid::getProj)
        .method("getDx", &Grid::getDx)
        .method("getDy", &Grid::getDy)
        .method("setLevel", overload<int(Level const &)>(&Grid::setLevel),
                overload<int(char const *)>(&Grid::setLevel))
        .method("getLevel", &Grid::getLevel)
        .method("getLevelType", &Grid::getLevelType)
        .method("setForeTime", overload<int(ForeTime const &)>(&Grid::setForeTime),
                overload<int(char const *)>(&Grid::setForeTime))
        .method("getForeTime", &Grid::getForeTime)
        .method("getForeHours", &Grid::getForeHours)
        .method("getForeSeconds", &Grid::getForeSeconds)
        .method("setVar", overload<int(GridVariable const &)>(&Grid::setVar),
                overload<int(char const *)>(&Grid::setVar))
        .method("getVar", &Grid::getVar)
        .method("setUnits", &Grid::setUnits)
        .method("getUnits", &Grid::getUnits)
        .method("convertUnits", &Grid::convertUnits)
        .method("getSpec", &Grid::getSpec)
        .method("meets", &Grid::meets)
        .method("tran", overload<int(EarthPoint const &, Point &) const>(&Grid::tran),
                overload<int(EarthPoint const &, GridPoint &) const>(&Grid::tran),
                overload<int(Point const &, EarthPoint &) const>(&Grid::tran),
                overload<int(Point const &, GridPoint &) const>(&Grid::tran),
                overload<int(GridPoint const &, EarthPoint &) const>(&Grid::tran),
                overload<int(GridPoint const &, Point &) const>(&Grid::tran),
                overload<int(Point const &, Domain const &, Point &) const>(&Grid::tran),
                overload<int(GridPoint const &, Domain const &, GridPoint &) const>(&Grid::tran),
                overload<int(Domain const &, Point const &, Point &) const>(&Grid::tran),
                overload<int(Domain const &, GridPoint const &, GridPoint &) const>(&Grid::tran),
                overload<int(int, EarthPoint &) const>(&Grid::tran),
                overload<int(int, GridPoint &) const>(&Grid::tran),
                overload<int(int, Point &) const>(&Grid::tran))
        .method("adjustDir", &Grid::adjustDir)
        .method("unadjustDir", &Grid::unadjustDir)
        .method("allocLocate", &Grid::allocLocate)
        .method("setLocate", overload<int()>(&Grid::setLocate),
                overload<int(Domain const &)>(&Grid::setLocate),
                overload<int(int, int, Point const &)>(&Grid::setLocate))
        .method("getLocate", &Grid::getLocate)
        .method("isLocate", &Grid::isLocate)
        .method("getValid", &Grid::getValid)
        .method("getAverage", &Grid::getAverage)
        .method("getRange", overload<int(float &, float &) const>(&Grid::getRange),
                overload<int(Range &) const>(&Grid::getRange))
        .method("scale", &Grid::scale)
        .method("offset", &Grid::offset)
        .print(&Grid::print)
        .method("printInfo", &Grid::printInfo)
        .method("printStats", &Grid::printStats)
        .method("printData", &Grid::printData);
}

void bindGrids(Module & m)
{
    Class<Grids>(m, "Grids")
        .constructor<>()
        .method("add", &Grids::add)
        .method("getNum", &Grids::getNum)
        .method("setNum", &Grids::setNum)
        .item<&Grids::get>("get")
        .method("clear", &Grids::clear)
        .method("find", &Grids::find)
        .print(&Grids::print);
}

} // namespace Yul::python
