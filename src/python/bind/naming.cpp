// Data files by type and time.
#include "core/String.h"
#include "naming/Filename.h"
#include "naming/NameConv.h"
#include "naming/NameConvFile.h"
#include "python/bind/Bind.h"

namespace Yul::python {

void bindFilename(Module & m)
{
    Class<Filename>(m, "Filename")
        .constructor<>()
        .constructor<char const *>()
        .constructor<char const *, char const *>()
        .method("init", &Filename::init)
        .method("set", overload<int(char const *)>(&Filename::set),
                overload<int(char const *, char const *)>(&Filename::set))
        .method("add", overload<int(char const *)>(&Filename::add),
                overload<int(char const *, char const *)>(&Filename::add))
        .method("getNum", &Filename::getNum)
        .method("get", overload<char const *(int) const>(&Filename::get),
                overload<char const *() const>(&Filename::get))
        .method("getIndex", overload<char const *(int) const>(&Filename::getIndex),
                overload<char const *() const>(&Filename::getIndex));
}

void bindNameConvFile(Module & m)
{
    Class<NameConvFile>(m, "NameConvFile")
        .constructor<>()
        .method("init", &NameConvFile::init)
        .method("set", &NameConvFile::set)
        .method("setFilename", &NameConvFile::setFilename)
        .method("getFilename", &NameConvFile::getFilename)
        .method("getDate", &NameConvFile::getDate)
        .method("getSeconds", &NameConvFile::getSeconds);
}

void bindNameConv(Module & m)
{
    Class<NameConv>(m, "NameConv")
        .constructor<>()
        .constructor<char const *>()
        .method("init", &NameConv::init)
        .method("set", &NameConv::set)
        .method("setOutput", &NameConv::setOutput)
        .method("setFixDate", overload<int(DateVal const &)>(&NameConv::setFixDate),
                overload<int(char const *)>(&NameConv::setFixDate))
        .method("setLateLimit", &NameConv::setLateLimit)
        .method("setLateDate", &NameConv::setLateDate)
        .method("setPath", overload<int(char const *)>(&NameConv::setPath),
                overload<int(String const &)>(&NameConv::setPath))
        .method("getPath", &NameConv::getPath)
        .method("getFile", &NameConv::getFile)
        .method("setExt", &NameConv::setExt)
        .method("getExt", &NameConv::getExt)
        .method("setFore", &NameConv::setFore)
        .method("setKey", &NameConv::setKey)
        .method("getKey", &NameConv::getKey)
        .method("setOffset", &NameConv::setOffset)
        .method("encode", &NameConv::encode)
        .method("encodeFile", &NameConv::encodeFile)
        .method("encodeHdr", &NameConv::encodeHdr)
        .method("setLatest", &NameConv::setLatest)
        .method("setFile", &NameConv::setFile)
        .method("getDate", &NameConv::getDate)
        .print(&NameConv::print);
}

} // namespace Yul::python
