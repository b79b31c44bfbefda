// Texts, settings and the library's global class.
#include "core/Const.h"
#include "core/FileAttr.h"
#include "core/FileTool.h"
#include "core/Resrc.h"
#include "core/String.h"
#include "core/Strings.h"
#include "core/Yul.h"
#include "python/bind/Bind.h"

namespace Yul::python {

void bindString(Module & m)
{
    Class<String>(m, "String")
        .constructor<>()
        .constructor<char const *>()
        .constructor<int>()
        .constructor<String const &>()
        .method("init", &String::init)
        .method("get", &String::get)
        .method("length", &String::length)
        .method("set", overload<int(char const *)>(&String::set), overload<int(String const &)>(&String::set))
        .method("copy", overload<int(char const *)>(&String::copy),
                overload<int(String const &)>(&String::copy))
        .method("append", overload<int(char const *)>(&String::append),
                overload<int(String const &)>(&String::append))
        .method("clear", &String::clear)
        .method("printf", &String::printf)
        .method("aprintf", &String::aprintf)
        .method("scanf", &String::scanf)
        .method("scanp", &String::scanp);
}

void bindStrings(Module & m)
{
    Class<Strings>(m, "Strings")
        .constructor<>()
        .constructor<char const *, char>()
        .method("set", &Strings::set)
        .method("add", &Strings::add)
        .method("clear", &Strings::clear)
        .method("getNum", &Strings::getNum)
        .method("getString", &Strings::getString)
        .method("get", &Strings::get)
        .method("scanf", &Strings::scanf);
}

void bindResrc(Module & m)
{
    Class<Resrc>(m, "Resrc")
        .constants({
            {"NONE", Resrc::NONE},
            {"BASE", Resrc::BASE},
            {"FILE", Resrc::FILE},
            {"ENV", Resrc::ENV},
            {"COMMAND", Resrc::COMMAND},
            {"USER", Resrc::USER},
        })
        .constructor<>()
        .method("init", &Resrc::init)
        .method("clear", &Resrc::clear)
        .method("add", &Resrc::add)
        .method("set", overload<int(char const *, char const *, int)>(&Resrc::set),
                overload<int(char const *, char const *)>(&Resrc::set),
                overload<int(char const *, String &)>(&Resrc::set))
        .method("put", &Resrc::put)
        .method("append", &Resrc::append)
        .method("prepend", &Resrc::prepend)
        .method("get", overload<char const *(char const *) const>(&Resrc::get),
                overload<char const *(char const *, char const *) const>(&Resrc::get),
                overload<int(char const *, int) const>(&Resrc::get),
                overload<float(char const *, float) const>(&Resrc::get))
        .method("getBool", &Resrc::getBool)
        .method("getType", &Resrc::getType)
        .method("scanf", &Resrc::scanf)
        .method("rewind", &Resrc::rewind)
        .method("getNext", &Resrc::getNext)
        .method("getValues", &Resrc::getValues)
        .print(&Resrc::print)
        .method("printAll", &Resrc::printAll);
}

void bindConst(Module & m)
{
    Class<Const>(m, "Const")
        .constructor<>()
        .variable("MISS", &Const::MISS)
        .variable("PI", &Const::PI)
        .variable("EARTH", &Const::EARTH)
        .variable("TWO_PI", &Const::TWO_PI)
        .variable("DRC", &Const::DRC)
        .variable("RDC", &Const::RDC)
        .variable("R", &Const::R)
        .variable("G", &Const::G)
        .variable("CP", &Const::CP)
        .variable("CV", &Const::CV);
}

void bindFileAttr(Module & m)
{
    Class<FileAttr>(m, "FileAttr")
        .constants({
            {"READ", FileAttr::READ},
            {"WRITE", FileAttr::WRITE},
            {"APPEND", FileAttr::APPEND},
        })
        .constructor<>()
        .staticMethod("getText", &FileAttr::getText);
}

void bindYul(Module & m)
{
    Class<Yul>(m, "Yul")
        .constants({
            {"NONE", Yul::NONE},     {"PRINT", Yul::PRINT},   {"ERROR", Yul::ERROR},
            {"WARN", Yul::WARN},     {"MESS", Yul::MESS},     {"OUT1", Yul::OUT1},
            {"OUT2", Yul::OUT2},     {"OUT3", Yul::OUT3},     {"OUT4", Yul::OUT4},
            {"OUT5", Yul::OUT5},     {"OUT6", Yul::OUT6},     {"OUT7", Yul::OUT7},
            {"OUT8", Yul::OUT8},     {"DEBUG1", Yul::DEBUG1}, {"DEBUG2", Yul::DEBUG2},
            {"DEBUG3", Yul::DEBUG3}, {"DEBUG4", Yul::DEBUG4}, {"DEBUG5", Yul::DEBUG5},
            {"DEBUG6", Yul::DEBUG6}, {"DEBUG7", Yul::DEBUG7}, {"DEBUG8", Yul::DEBUG8},
        })
        .constants({
            {"NOERR", Yul::NOERR},
            {"NORUN", Yul::NORUN},
            {"MISC", Yul::MISC},
            {"NOMEMORY", Yul::NOMEMORY},
            {"NOGRAPH", Yul::NOGRAPH},
            {"NOINIT", Yul::NOINIT},
            {"NOFILE", Yul::NOFILE},
            {"NODBASE", Yul::NODBASE},
            {"NOWRITE", Yul::NOWRITE},
            {"NOINPUT", Yul::NOINPUT},
            {"NODATA", Yul::NODATA},
            {"BADPARAM", Yul::BADPARAM},
        })
        .constructor<>()
        .staticMethod("setMessageLevel", overload<int(int)>(&Yul::setMessageLevel),
                      overload<int(char const *)>(&Yul::setMessageLevel))
        .staticMethod("getMessageLevel", &Yul::getMessageLevel)
        .staticMethod("checkMessage", &Yul::checkMessage)
        .staticMethod("isDebug", overload<bool()>(&Yul::isDebug), overload<bool(int)>(&Yul::isDebug))
        .staticMethod("outMessage", overload<int(char const *, ...)>(&Yul::outMessage),
                      overload<int(int, char const *, ...)>(&Yul::outMessage))
        .staticMethod("outWarning", &Yul::outWarning)
        .staticMethod("outError", &Yul::outError)
        .staticMethod("outDebug", overload<int(char const *, ...)>(&Yul::outDebug),
                      overload<int(int, char const *, ...)>(&Yul::outDebug))
        .staticPrint(&Yul::print)
        .staticMethod("setError", &Yul::setError)
        .staticMethod("getError", &Yul::getError)
        .staticMethod("exit", overload<void(Yul::Error)>(&Yul::exit))
        .staticMethod("setProgramName", &Yul::setProgramName)
        .staticMethod("getProgramName", &Yul::getProgramName)
        .staticMethod("setDatabasePath", &Yul::setDatabasePath)
        .staticMethod("getDatabasePath", &Yul::getDatabasePath)
        .staticMethod("setInitTime", &Yul::setInitTime)
        .staticMethod("getInitTime", &Yul::getInitTime)
        .staticMethod("getTime", &Yul::getTime)
        .staticMethod("getVirtMem", &Yul::getVirtMem)
        .staticMethod("getComputerName", &Yul::getComputerName)
        .staticMethod("sleep", &Yul::sleep)
        .staticMethod("pause", &Yul::pause)
        .staticMethod("getVersion", &Yul::getVersion)
        .staticMethod("resrc", &Yul::resrc)
        .staticMethod("getResrc", overload<char const *(char const *)>(&Yul::getResrc),
                      overload<int(char const *, int)>(&Yul::getResrc),
                      overload<float(char const *, float)>(&Yul::getResrc),
                      overload<char const *(char const *, char const *)>(&Yul::getResrc))
        .staticMethod("getResrcBool", &Yul::getResrcBool)
        .staticMethod("getResrcType", &Yul::getResrcType)
        .staticMethod("addResrc", &Yul::addResrc)
        .staticMethod("putResrc", &Yul::putResrc)
        .staticMethod("setResrc", &Yul::setResrc)
        .staticMethod("appendResrc", &Yul::appendResrc)
        .staticMethod("printAllResrc", &Yul::printAllResrc)
        .staticMethod("rewindResrc", &Yul::rewindResrc)
        .staticMethod("nextResrc", &Yul::nextResrc);
}

void bindFileTool(Module & m)
{
    Class<FileTool>(m, "FileTool")
        .constructor<>()
        .staticMethod("addPath", &FileTool::addPath)
        .staticMethod("exist", &FileTool::exist)
        .staticMethod("getSize", &FileTool::getSize)
        .staticMethod("isDirectory", &FileTool::isDirectory);
}

} // namespace Yul::python
