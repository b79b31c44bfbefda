// The start of a program: its options and settings.
#include "core/String.h"
#include "program/ResrcDB.h"
#include "python/bind/Bind.h"

namespace Yul::python {

void bindResrcDBItem(Module & m)
{
    Class<ResrcDBItem>(m, "ResrcDBItem")
        .constructor<>()
        .constructor<char const *, char const *, char const *, char const *>()
        .method("set", &ResrcDBItem::set)
        .method("getKey", &ResrcDBItem::getKey)
        .method("getEnv", &ResrcDBItem::getEnv)
        .method("getBrief", &ResrcDBItem::getBrief)
        .method("getHelp", &ResrcDBItem::getHelp);
}

void bindResrcDBList(Module & m)
{
    Class<ResrcDBList>(m, "ResrcDBList")
        .constructor<>()
        .method("add",
                overload<int(char const *, char const *, char const *, char const *)>(&ResrcDBList::add),
                overload<int(ResrcDBItem const &)>(&ResrcDBList::add))
        .method("rewind", &ResrcDBList::rewind)
        .method("first", &ResrcDBList::first)
        .method("next", &ResrcDBList::next)
        .method("get", overload<ResrcDBItem *(int)>(&ResrcDBList::get))
        .method("getNum", &ResrcDBList::getNum)
        .print(&ResrcDBList::print);
}

void bindResrcDB(Module & m)
{
    Class<ResrcDB>(m, "ResrcDB")
        .constructor<>()
        .staticMethod("create", &ResrcDB::create)
        .staticMethod("decodeProgramName", &ResrcDB::decodeProgramName)
        .staticMethod("printHelp", &ResrcDB::printHelp);
}

} // namespace Yul::python
