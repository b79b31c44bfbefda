// Map files and the map layer of plots.
#include "plot/MapFile.h"
#include "plot/MapFileHeader.h"
#include "plot/MapPlot.h"
#include "plot/Plot.h"
#include "python/bind/Bind.h"

namespace Yul::python {

void bindMapPlot(Module & m)
{
    Class<MapPlot>(m, "MapPlot")
        .constructor<>()
        .constructor<MapPlot const &>()
        .method("init", &MapPlot::init)
        .method("setFile", &MapPlot::setFile)
        .method("setDetail", &MapPlot::setDetail)
        .method("getDetail", &MapPlot::getDetail)
        .method("setRank", &MapPlot::setRank)
        .method("setLayer", overload<int(char const *, PlotAttr const &)>(&MapPlot::setLayer),
                overload<int(char const *, char const *)>(&MapPlot::setLayer))
        .method("isLayer", &MapPlot::isLayer)
        .method("clearLayers", &MapPlot::clearLayers)
        .method("setSteps", &MapPlot::setSteps)
        .method("setParam", &MapPlot::setParam)
        .method("drawFill", &MapPlot::drawFill)
        .method("drawLines", &MapPlot::drawLines)
        .method("draw", &MapPlot::draw);
}

void bindMapFileHeader(Module & m)
{
    Class<MapFileHeader>(m, "MapFileHeader")
        .constants({{"LINE", MapFileHeader::LINE}, {"AREA", MapFileHeader::AREA}})
        .constructor<>()
        .constructor<MapFileHeader const &>()
        .method("init", &MapFileHeader::init)
        .method("setName", &MapFileHeader::setName)
        .method("setScale", &MapFileHeader::setScale)
        .method("setKind", &MapFileHeader::setKind)
        .method("setUnits", &MapFileHeader::setUnits)
        .method("getName", &MapFileHeader::getName)
        .method("getScale", &MapFileHeader::getScale)
        .method("getKind", &MapFileHeader::getKind)
        .method("getUnits", &MapFileHeader::getUnits)
        .method("getNumLines", &MapFileHeader::getNumLines)
        .method("getNumPoints", &MapFileHeader::getNumPoints)
        .method("getRange", &MapFileHeader::getRange)
        .print(&MapFileHeader::print);
}

void bindMapFile(Module & m)
{
    Class<MapFile>(m, "MapFile")
        .constructor<>()
        .method("open", &MapFile::open)
        .method("close", &MapFile::close)
        .method("isOpen", &MapFile::isOpen)
        .method("getSource", &MapFile::getSource)
        .method("getNumLayers", &MapFile::getNumLayers)
        .method("getHeader", &MapFile::getHeader)
        .method("findLayer", &MapFile::findLayer)
        .method("getRank", &MapFile::getRank)
        .method("getRange", &MapFile::getRange)
        .method("getLine", &MapFile::getLine)
        .method("setSource", &MapFile::setSource)
        .method("addLayer", &MapFile::addLayer)
        .method("addLine", &MapFile::addLine)
        .method("write", &MapFile::write);
}

} // namespace Yul::python
