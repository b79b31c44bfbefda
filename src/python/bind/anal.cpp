// Objective analysis: reports of stations and what makes grids of them.
#include "grid/Grids.h"
#include "grid/ObjectAnal.h"
#include "grid/StationData.h"
#include "python/bind/Bind.h"

#include <span>

namespace Yul::python {

void bindStationData(Module & m)
{
    Class<StationData>(m, "StationData")
        .constructor<int>()
        .constructor<StationData const &>()
        .method("clear", &StationData::clear)
        .method("add", overload<int(EarthPoint const &)>(&StationData::add),
                overload<int(std::span<float const>, std::span<float const>)>(&StationData::add))
        .method("setValue", &StationData::setValue)
        .method("setValues", &StationData::setValues)
        .method("getValue", &StationData::getValue)
        .method("getNum", &StationData::getNum)
        .method("getFields", &StationData::getFields)
        .item<&StationData::getLocation>("getLocation")
        .method("setName", &StationData::setName)
        .method("getName", &StationData::getName);
}

void bindObjectAnal(Module & m)
{
    Class<ObjectAnal>(m, "ObjectAnal")
        .constructor<>()
        .constructor<ObjectAnal const &>()
        .method("init", &ObjectAnal::init)
        .method("set", overload<int(char const *)>(&ObjectAnal::set),
                overload<int(float, float, int, float)>(&ObjectAnal::set))
        .method("setParam", &ObjectAnal::setParam)
        .method("setFilter", &ObjectAnal::setFilter)
        .method("setRadInf", &ObjectAnal::setRadInf)
        .method("setNumPass", &ObjectAnal::setNumPass)
        .method("setConverg", &ObjectAnal::setConverg)
        .method("setMinSta", &ObjectAnal::setMinSta)
        .method("setMissVal", &ObjectAnal::setMissVal)
        .method("getFilter", &ObjectAnal::getFilter)
        .method("getRadInf", &ObjectAnal::getRadInf)
        .method("getNumPass", &ObjectAnal::getNumPass)
        .method("getConverg", &ObjectAnal::getConverg)
        .method("getMinSta", &ObjectAnal::getMinSta)
        .method("getMissVal", &ObjectAnal::getMissVal)
        .method("setDomain", &ObjectAnal::setDomain)
        .method("getDomain", &ObjectAnal::getDomain)
        .method("compute", &ObjectAnal::compute)
        .method("getRms", &ObjectAnal::getRms)
        .print(&ObjectAnal::print);
}

} // namespace Yul::python
