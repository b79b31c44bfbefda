// Grid files: the library's own, and the front for all forms.
#include "grid/GridFile.h"
#include "grid/GridYulFile.h"
#include "grid/Grids.h"
#include "python/bind/Bind.h"

namespace Yul::python {

void bindGridFile(Module & m)
{
    Class<GridFile>(m, "GridFile")
        .constants({
            {"YUL", GridFile::YUL},
            {"NETCDF", GridFile::NETCDF},
            {"GRIB", GridFile::GRIB},
            {"READ", GridFile::READ},
            {"WRITE", GridFile::WRITE},
        })
        .constructor<>()
        .constructor<char const *>()
        .constructor<Filename const &>()
        .constructor<char const *, int>()
        .constructor<char const *, int, int>()
        .staticOrMethod<&GridFile::checkType>("checkType")
        .method(
            "open", [](GridFile & file, char const * name) { return file.open(name); },
            [](GridFile & file, char const * name, int mode) { return file.open(name, mode); },
            overload<int(char const *, int, int)>(&GridFile::open),
            [](GridFile & file, Filename const & names) { return file.open(names); },
            [](GridFile & file, Filename const & names, int mode) { return file.open(names, mode); },
            overload<int(Filename const &, int, int)>(&GridFile::open))
        .method("close", &GridFile::close)
        .method("isOpen", &GridFile::isOpen)
        .method("getType", &GridFile::getType)
        .method("setVer", &GridFile::setVer)
        .method("setFormat", &GridFile::setFormat)
        .method("setParam", &GridFile::setParam)
        .method("useHdrFile", &GridFile::useHdrFile)
        .method("setMaxBad", overload<int(int)>(&GridFile::setMaxBad),
                overload<int(int, float)>(&GridFile::setMaxBad))
        .method("setValueBits", &GridFile::setValueBits)
        .method("isBad", &GridFile::isBad)
        .method("setMissValue", &GridFile::setMissValue)
        .method("read", overload<int(Grid &)>(&GridFile::read),
                overload<int(char const *, Grid &)>(&GridFile::read),
                overload<int(GridSpec const &, Grid &)>(&GridFile::read),
                overload<int(Grids &)>(&GridFile::read))
        .method("readHdr", &GridFile::readHdr)
        .method("readData", &GridFile::readData)
        .method("peek", &GridFile::peek)
        .method("next", &GridFile::next)
        .method("rewind", &GridFile::rewind)
        .method("write", overload<int(Grid const &)>(&GridFile::write),
                overload<int(char const *, int, Grid const &)>(&GridFile::write));
}

void bindGridYulFile(Module & m)
{
    Class<GridYulFile>(m, "GridYulFile")
        .constants({
            {"READ", GridYulFile::READ},
            {"WRITE", GridYulFile::WRITE},
            {"TEXT", GridYulFile::TEXT},
            {"BINARY", GridYulFile::BINARY},
            {"SEPARATE", GridYulFile::SEPARATE},
        })
        .constructor<>()
        .constructor<char const *>()
        .constructor<char const *, int>()
        .constructor<char const *, int, int>()
        .method(
            "open", [](GridYulFile & file, char const * name) { return file.open(name); },
            [](GridYulFile & file, char const * name, int mode) { return file.open(name, mode); },
            &GridYulFile::open)
        .method("close", &GridYulFile::close)
        .method("isOpen", &GridYulFile::isOpen)
        .method("setVer", &GridYulFile::setVer)
        .method("getVer", &GridYulFile::getVer)
        .method("setFormat", &GridYulFile::setFormat)
        .method("getFormat", &GridYulFile::getFormat)
        .method("read", overload<int(Grid &)>(&GridYulFile::read),
                overload<int(char const *, int, Grid &)>(&GridYulFile::read),
                overload<int(GridSpec const &, Grid &)>(&GridYulFile::read),
                overload<int(Grids &)>(&GridYulFile::read))
        .method("readHdr", &GridYulFile::readHdr)
        .method("readData", &GridYulFile::readData)
        .method("peek", &GridYulFile::peek)
        .method("next", &GridYulFile::next)
        .method("rewind", &GridYulFile::rewind)
        .method("write", overload<int(Grid const &)>(&GridYulFile::write),
                overload<int(char const *, int, Grid const &)>(&GridYulFile::write))
        .staticOrMethod<&GridYulFile::checkType>("checkType");
}

} // namespace Yul::python
