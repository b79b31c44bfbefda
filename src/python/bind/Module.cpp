// The module _Yul: its classes in the order of their declaration.
#include "python/bind/Bind.h"

namespace Yul::python {
namespace {

constexpr Module::Binder BINDERS[] = {
    bindString,       bindStrings,     bindResrc,       bindConst,       bindConvert,       bindFloatArray,
    bindFileAttr,     bindYul,         bindUnitData,    bindUnit,        bindLclData,       bindCalc,
    bindDateVal,      bindDate,        bindBuffer,      bindTimezone,    bindForeTime,      bindDateTool,
    bindRect,         bindEarthPoint,  bindEarthRange,  bindEarthPoints, bindGridPoint,     bindGridPoints,
    bindGridStats,    bindColor,       bindRGB,         bindColorMap,    bindPlotAttr,      bindColorFill,
    bindEnhance,      bindPoint,       bindPoints,      bindGeomBox,     bindDatum,         bindFilename,
    bindNameConvFile, bindNameConv,    bindFileTool,    bindCityData,    bindCityFile,      bindSfcData,
    bindSfcFile,      bindSfcWmoData,  bindSfcWmoFile,  bindMosData,     bindMosFile,       bindMetarFile,
    bindMetarTool,    bindSynopTool,   bindRange,       bindVCoord,      bindLevel,         bindVariable,
    bindVarSpec,      bindVarNameItem, bindVarName,     bindDomainVal,   bindDomain,        bindDomainTool,
    bindResrcDBItem,  bindResrcDBList, bindResrcDB,     bindProg,        bindWmoProduct,    bindWmoParse,
    bindModelSpec,    bindGridSpec,    bindGrid,        bindGrids,       bindGribParam,     bindGribPDB,
    bindGribFile,     bindGridFile,    bindGridMath,    bindGridPiece,   bindGridRead,      bindImage,
    bindImageFile,    bindImageTool,   bindGridTool,    bindNidsData,    bindNidsInfo,      bindNidsRadial,
    bindNidsRun,      bindNidsText,    bindNidsVector,  bindNidsWind,    bindNidsFile,      bindNidsImage,
    bindStormAttr,    bindListener,    bindGraphAttr,   bindGraph,       bindPlot,          bindDrawing,
    bindFigure,       bindContPlot,    bindMapPlot,     bindImagePlot,   bindNidsPlot,      bindRadPlot,
    bindSatPlot,      bindSfcPlot,     bindMosPlot,     bindGridPlot,    bindFrontData,     bindFrontPlot,
    bindWatchPlot,    bindWarnPlot,    bindLightPlot,   bindDatumPlot,   bindMapFileHeader, bindMapFile,
    bindDateRange,    bindGTran,       bindStationData, bindObjectAnal,  bindGridYulFile,   bindGridBox,
    bindTools,
};

} // namespace
} // namespace Yul::python

PyMODINIT_FUNC PyInit__Yul()
{
    return Yul::python::Module::make(
        "_Yul", "The library Yul: one function for every operation of its classes.", Yul::python::BINDERS);
}
