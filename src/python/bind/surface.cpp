// Bulletin feeds.
#include "core/String.h"
#include "python/bind/Bind.h"
#include "surface/WmoParse.h"
#include "surface/WmoProduct.h"

namespace Yul::python {

void bindWmoProduct(Module & m)
{
    Class<WmoProduct>(m, "WmoProduct")
        .base<Filename>()
        .constructor<>()
        .method("init", &WmoProduct::init)
        .method("set", &WmoProduct::set)
        .method("getHeader", &WmoProduct::getHeader)
        .method("getAwip", &WmoProduct::getAwip)
        .method("getLoc", &WmoProduct::getLoc);
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
        .method("getHeader", &WmoParse::getHeader)
        .method("getAwip", &WmoParse::getAwip)
        .method("isNewProd", &WmoParse::isNewProd)
        .method("isData", &WmoParse::isData)
        .method("getLoc", &WmoParse::getLoc)
        .method("getHeaderLoc", &WmoParse::getHeaderLoc)
        .staticMethod("isStart", &WmoParse::isStart)
        .method("peek", &WmoParse::peek)
        .method("read", &WmoParse::read)
        .method("setLoc", overload<int(long)>(&WmoParse::setLoc), overload<int(int, long)>(&WmoParse::setLoc))
        .method("compare", overload<int(char const *) const>(&WmoParse::compare),
                overload<int(char const *, char const *, char const *) const>(&WmoParse::compare))
        .staticMethod("checkZone", &WmoParse::checkZone);
}

} // namespace Yul::python
