// Bulletin feeds.
#include "core/String.h"
#include "python/bind/Bind.h"
#include "surface/SfcWmoData.h"
#include "surface/SfcWmoFile.h"
#include "surface/WmoParse.h"
#include "surface/WmoProduct.h"

namespace Yul::python {

/// All that a bulletin holds, as a tuple: heading, identifier, location, text, and the codes as bytes.
struct BulletinContent
{
    WmoProduct const * product;
};

template <> PyObject * toPython<BulletinContent>(BulletinContent && content, Source const &)
{
    WmoProduct const & product = *content.product;
    return Py_BuildValue("NNlNy#", fromText(product.getHeader()), fromText(product.getAwip()),
                         product.getLoc(), fromText(product.view()), product.getCodes(),
                         static_cast<Py_ssize_t>(product.getNumLines()));
}

template <> void prepareResult<BulletinContent>() {}

void bindSfcWmoData(Module & m)
{
    Class<SfcWmoData>(m, "SfcWmoData")
        .constants({
            {"NONE", SfcWmoData::NONE},
            {"HOURLY", SfcWmoData::HOURLY},
            {"SYNOPTIC", SfcWmoData::SYNOPTIC},
            {"USA", SfcWmoData::USA},
            {"CANADA", SfcWmoData::CANADA},
            {"MEXICO", SfcWmoData::MEXICO},
            {"ELSEWHERE", SfcWmoData::ELSEWHERE},
        })
        .constructor<>()
        .method("init", &SfcWmoData::init)
        .method("getText", &SfcWmoData::getText)
        .method("getMessage", &SfcWmoData::getMessage)
        .method("getWord", &SfcWmoData::getWord)
        .method("getType", &SfcWmoData::getType)
        .method("getStation", &SfcWmoData::getStation)
        .method("getDate", &SfcWmoData::getDate)
        .method("getHeader", &SfcWmoData::getHeader)
        .method("getLoc", &SfcWmoData::getLoc)
        .method("getKind", &SfcWmoData::getKind)
        .method("getCountry", &SfcWmoData::getCountry)
        .method("isNil", &SfcWmoData::isNil)
        .method("isCorrected", &SfcWmoData::isCorrected)
        .method("setReport", &SfcWmoData::setReport)
        .method("setDate", &SfcWmoData::setDate)
        .method("setBulletin", &SfcWmoData::setBulletin)
        .method("setFlags", &SfcWmoData::setFlags)
        .print(&SfcWmoData::print);
}

void bindSfcWmoFile(Module & m)
{
    Class<SfcWmoFile>(m, "SfcWmoFile")
        .base<WmoParse>()
        .constructor<>()
        .constructor<char const *>()
        .method("init", &SfcWmoFile::init)
        .method("setType", &SfcWmoFile::setType)
        .method("setDate", &SfcWmoFile::setDate)
        .method("read", overload<int(SfcWmoData &)>(&SfcWmoFile::read),
                overload<int(WmoProduct &)>(&SfcWmoFile::read))
        .method("checkHeader", &SfcWmoFile::checkHeader)
        .method("getHeading", &SfcWmoFile::getHeading)
        .method("getDay", &SfcWmoFile::getDay)
        .method("getHour", &SfcWmoFile::getHour)
        .method("getMinute", &SfcWmoFile::getMinute)
        .method("getKind", &SfcWmoFile::getKind)
        .method("getCountry", &SfcWmoFile::getCountry)
        .method("getNumReports", &SfcWmoFile::getNumReports);
}

void bindWmoProduct(Module & m)
{
    Class<WmoProduct>(m, "WmoProduct")
        .base<Filename>()
        .constructor<>()
        .method("init", &WmoProduct::init)
        .method("set", &WmoProduct::set)
        .method("setLines", &WmoProduct::setLines)
        .method("getHeader", &WmoProduct::getHeader)
        .method("getAwip", &WmoProduct::getAwip)
        .method("getLoc", &WmoProduct::getLoc)
        .method("completeDate", &WmoProduct::completeDate)
        .method("getNumLines", &WmoProduct::getNumLines)
        .method("getText", &WmoProduct::getText)
        .method("getCodes", &WmoProduct::getCodes)
        .method("getCode", &WmoProduct::getCode)
        .method("getContent", [](WmoProduct const & product) { return BulletinContent{&product}; });
}

void bindWmoParse(Module & m)
{
    Class<WmoParse>(m, "WmoParse")
        .base<Filename>()
        .constants({
            {"NONE", WmoParse::NONE},
            {"DATA", WmoParse::DATA},
            {"NOT_ALNUM", WmoParse::NOT_ALNUM},
            {"END", WmoParse::END},
            {"ZONE", WmoParse::ZONE},
            {"EVENT", WmoParse::EVENT},
            {"HEADLINE", WmoParse::HEADLINE},
        })
        .constructor<>()
        .constructor<char const *>()
        .method("init", &WmoParse::init)
        .method("setParam", &WmoParse::setParam)
        .method("setExpectId", &WmoParse::setExpectId)
        .method("setHeader", &WmoParse::setHeader)
        .method("setId", &WmoParse::setId)
        .method("open", overload<int(Filename const &)>(&WmoParse::open),
                overload<int(char const *)>(&WmoParse::open))
        .method("isOpen", &WmoParse::isOpen)
        .method("close", &WmoParse::close)
        .method("rewind", &WmoParse::rewind)
        .method("tell", &WmoParse::tell)
        .method("seek", &WmoParse::seek)
        .method("getFileInd", &WmoParse::getFileInd)
        .method("newFile", &WmoParse::newFile)
        .method("getLine", overload<int(String &)>(&WmoParse::getLine))
        .method("getProduct", &WmoParse::getProduct)
        .method("getHeader", &WmoParse::getHeader)
        .method("getAwip", &WmoParse::getAwip)
        .method("isNewProd", &WmoParse::isNewProd)
        .method("isData", &WmoParse::isData)
        .method("getLoc", &WmoParse::getLoc)
        .method("getHeaderLoc", &WmoParse::getHeaderLoc)
        .staticOrMethod<&WmoParse::isStart>("isStart")
        .method("peek", &WmoParse::peek)
        .method("read", &WmoParse::read)
        .method("setLoc", overload<int(long)>(&WmoParse::setLoc), overload<int(int, long)>(&WmoParse::setLoc))
        .method("compare", overload<int(char const *) const>(&WmoParse::compare),
                overload<int(char const *, char const *, char const *) const>(&WmoParse::compare))
        .staticOrMethod<&WmoParse::checkZone>("checkZone");
}

} // namespace Yul::python
