// GRIB files.
#include "grid/GribFile.h"
#include "grid/GribPDB.h"
#include "grid/GribParam.h"
#include "grid/Grids.h"
#include "python/bind/Bind.h"

namespace Yul::python {

void bindGribParam(Module & m)
{
    Class<GribParam>(m, "GribParam")
        .constructor<>()
        .method("init", &GribParam::init)
        .method("set", &GribParam::set)
        .method("setText", &GribParam::setText)
        .method("find", &GribParam::find)
        .staticMethod("makeKey", &GribParam::makeKey)
        .method("match", &GribParam::match)
        .method("isMiss", &GribParam::isMiss)
        .method("getNumber", &GribParam::getNumber)
        .method("getCentre", &GribParam::getCentre)
        .method("getTable", &GribParam::getTable)
        .method("getKey", &GribParam::getKey)
        .method("getName", &GribParam::getName)
        .method("getUnits", &GribParam::getUnits)
        .method("getText", &GribParam::getText)
        .method("getLevelCode", &GribParam::getLevelCode)
        .method("setLevelCode", &GribParam::setLevelCode)
        .method("getVarCode", &GribParam::getVarCode)
        .method("setVarCode", &GribParam::setVarCode)
        .method("getVar", &GribParam::getVar)
        .print(&GribParam::print);
}

void bindGribPDB(Module & m)
{
    Class<GribPDB>(m, "GribPDB")
        .constructor<>()
        .method("init", &GribPDB::init)
        .method("getEdition", &GribPDB::getEdition)
        .method("getCentre", &GribPDB::getCentre)
        .method("getSubCentre", &GribPDB::getSubCentre)
        .method("getModel", &GribPDB::getModel)
        .method("getGenName", &GribPDB::getGenName)
        .method("getGridType", &GribPDB::getGridType)
        .method("getDiscipline", &GribPDB::getDiscipline)
        .method("getCategory", &GribPDB::getCategory)
        .method("getParam", &GribPDB::getParam)
        .method("getTable", &GribPDB::getTable)
        .method("getTemplate", &GribPDB::getTemplate)
        .method("getMember", &GribPDB::getMember)
        .method("getDerived", &GribPDB::getDerived)
        .method("getPercentile", &GribPDB::getPercentile)
        .method("getProbability", &GribPDB::getProbability)
        .method("getLowerLimit", &GribPDB::getLowerLimit)
        .method("getUpperLimit", &GribPDB::getUpperLimit)
        .method("getLevel", &GribPDB::getLevel)
        .method("getVar", &GribPDB::getVar)
        .method("getDate", &GribPDB::getDate)
        .method("getForeTime", &GribPDB::getForeTime)
        .method("getRowLat", &GribPDB::getRowLat)
        .print(&GribPDB::print);
}

void bindGribFile(Module & m)
{
    Class<GribFile>(m, "GribFile")
        .constructor<>()
        .constructor<char const *>()
        .constructor<Filename const &>()
        .method("open", overload<int(char const *)>(&GribFile::open),
                overload<int(char const *, int)>(&GribFile::open),
                overload<int(Filename const &)>(&GribFile::open))
        .method("close", &GribFile::close)
        .method("isOpen", &GribFile::isOpen)
        .method("rewind", &GribFile::rewind)
        .method("getLoc", &GribFile::getLoc)
        .method("setLoc", &GribFile::setLoc)
        .method("read", overload<int(Grid &)>(&GribFile::read),
                overload<int(char const *, Grid &)>(&GribFile::read),
                overload<int(GridSpec const &, Grid &)>(&GribFile::read),
                overload<int(Grids &)>(&GribFile::read))
        .method("peek", &GribFile::peek)
        .method("next", &GribFile::next)
        .method("getHeader", &GribFile::getHeader)
        .method("useHdrFile", &GribFile::useHdrFile)
        .method("setMaxBad", overload<int(int)>(&GribFile::setMaxBad),
                overload<int(int, float)>(&GribFile::setMaxBad))
        .method("isBad", &GribFile::isBad)
        .method("setParam", &GribFile::setParam)
        .method("write", &GribFile::write)
        .method("setValueBits", &GribFile::setValueBits)
        .method("setDecimalScale", &GribFile::setDecimalScale)
        .staticOrMethod<&GribFile::checkType>("checkType");
}

} // namespace Yul::python
