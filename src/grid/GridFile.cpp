#include "grid/GridFile.h"

#include "core/File.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "grid/Grids.h"
#include "grid/native/Header.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace Yul {
namespace {

constexpr std::size_t TYPE_OCTETS = 200; // at the head of a file, by which its form is known
constexpr std::size_t MAX_PARAMS = 200;

} // namespace

int GridFile::checkType(char const * name)
{
    if (StrLib::equal(name, "-"))
        return YUL;
    File file;
    std::array<char, TYPE_OCTETS> octets;
    if (file.open(name, "r") == 0)
        return 0;
    std::string_view const head(octets.data(), file.read(octets.data(), octets.size()));
    if (head.starts_with(detail::native::MAGIC))
        return YUL;
    if (head.starts_with("CDF"))
        return NETCDF;
    return head.find("GRIB") != std::string_view::npos ? GRIB : 0;
}

int GridFile::open(char const * name, int open_mode, int format)
{
    return open(Filename(name), open_mode, format);
}

int GridFile::open(Filename const & names, int open_mode, int format)
{
    close();
    mode = open_mode;
    if (names.getNum() == 0)
        Yul::outWarning("GridFile::open: No file name\n");
    else if (mode == READ)
        return openForReading(names);
    else if (mode == WRITE)
        return openForWriting(names.get(), format);
    else
        Yul::outWarning("GridFile::open: Invalid mode: %d\n", mode);
    return 0;
}

int GridFile::openForReading(Filename const & names)
{
    files = names;
    next_file = 0;
    return openNextFile() ? 1 : 0;
}

int GridFile::openForWriting(char const * name, int format)
{
    bool const is_open = format == GRIB ? grib.open(name, WRITE) == 1 : yul.open(name, WRITE, format) == 1;
    if (is_open)
        type = format == GRIB ? GRIB : YUL;
    return is_open ? 1 : 0;
}

/// Opens the next file of the list; one that cannot be opened is named and passed over.
bool GridFile::openNextFile()
{
    type = 0;
    has_header = false;
    while (type == 0 && next_file < files.getNum()) {
        char const * const name = files.get(next_file);
        char const * const index = files.getIndex(next_file++);
        int const found = checkType(name);
        if (found == YUL && yul.open(name) == 1)
            type = YUL;
        else if (found == GRIB && grib.open(Filename(name, index)) == 1)
            type = GRIB;
        else if (found == NETCDF)
            Yul::outWarning("GridFile::open: netCDF files are not supported: %s\n", name);
        else if (found == 0)
            Yul::outWarning("GridFile::open: %s: %s\n",
                            File().open(name, "r") == 1 ? "Unknown type of file" : "Unable to open", name);
    }
    if (type == GRIB)
        for (auto const & [edition, row] : params)
            grib.setParam(edition, row);
    return type != 0;
}

int GridFile::close()
{
    int const yul_closed = yul.close();
    int const grib_closed = grib.close();
    if (grib_closed == 0)
        Yul::outWarning("GridFile::close: Unable to write the file\n");
    type = 0;
    files.init();
    next_file = 0;
    has_header = false;
    return yul_closed == 1 && grib_closed == 1 ? 1 : 0;
}

int GridFile::setParam(int edition, GribParam const & row)
{
    if (row.isMiss() || params.size() >= MAX_PARAMS)
        return 0;
    params.emplace_back(edition, row);
    return type == GRIB ? grib.setParam(edition, row) : 1;
}

int GridFile::setMissValue(float value)
{
    if (std::isnan(value))
        return 0;
    miss_value = detail::isMissing(value) ? std::nullopt : std::optional(value);
    return 1;
}

/// Puts -9999 where a grid that was just read has the other missing value; gives the result on.
int GridFile::replaceMissing(int result, Grid & grid) const
{
    if (result == 1 && miss_value)
        std::ranges::replace(grid.getValues(), *miss_value, static_cast<float>(Const::MISS));
    return result;
}

/// Runs an operation on the file that is open, and then on those that follow it until one succeeds. A field that is bad
/// ends no file.
template <class Operation> int GridFile::inSomeFile(Operation const & operation)
{
    if (type == 0 || mode != READ) {
        Yul::outWarning("GridFile::read: No file is open for reading\n");
        return 0;
    }
    while (operation() == 0)
        if (isBad() || next_file >= files.getNum() || !openNextFile())
            return 0;
    return 1;
}

/// GRIB: a header that was handed out is behind us, its values are not wanted.
void GridFile::passHeader()
{
    if (std::exchange(has_header, false))
        grib.next();
}

int GridFile::peek(Grid & grid)
{
    return inSomeFile([&] {
        if (type == YUL)
            return yul.peek(grid);
        passHeader();
        return grib.peek(grid);
    });
}

int GridFile::readHdr(Grid & grid)
{
    return inSomeFile([&] {
        if (type == YUL)
            return yul.readHdr(grid);
        passHeader();
        has_header = grib.peek(grid) == 1;
        return has_header ? 1 : 0;
    });
}

int GridFile::readData(Grid & grid)
{
    bool const is_grib = std::exchange(has_header, false);
    return replaceMissing(is_grib ? grib.readData(grid) : yul.readData(grid), grid);
}

int GridFile::read(Grid & grid)
{
    return inSomeFile([&] {
        if (type == YUL)
            return replaceMissing(yul.read(grid), grid);
        passHeader();
        return replaceMissing(grib.read(grid), grid);
    });
}

int GridFile::read(char const * name, Grid & grid)
{
    return open(name) == 1 ? read(grid) : 0;
}

int GridFile::read(GridSpec const & spec, Grid & grid)
{
    return inSomeFile([&] {
        if (type == YUL)
            return replaceMissing(yul.read(spec, grid), grid);
        passHeader();
        return replaceMissing(grib.read(spec, grid), grid);
    });
}

int GridFile::read(Grids & grids)
{
    if (type == 0 || mode != READ) {
        Yul::outWarning("GridFile::read: No file is open for reading\n");
        return 0;
    }
    auto const before = grids.all().size();
    bool is_whole = true;
    do {
        passHeader();
        if (type == GRIB)
            grib.read(grids);
        else
            is_whole = yul.read(grids) == 1 && is_whole;
    } while (next_file < files.getNum() && openNextFile());
    for (auto i = before; i < grids.all().size(); ++i)
        replaceMissing(1, grids.all()[i]);
    return is_whole && grids.all().size() > before ? 1 : 0;
}

int GridFile::next()
{
    return inSomeFile([&] {
        if (type == YUL)
            return yul.next();
        passHeader();
        return grib.next();
    });
}

int GridFile::rewind()
{
    if (mode != READ || files.getNum() == 0)
        return 0;
    if (files.getNum() > 1)
        return openForReading(Filename(files));
    has_header = false;
    return type == YUL ? yul.rewind() : grib.rewind();
}

int GridFile::write(Grid const & grid)
{
    return type == GRIB ? grib.write(grid) : yul.write(grid);
}

int GridFile::write(char const * name, int format, Grid const & grid)
{
    return open(name, WRITE, format) == 1 ? write(grid) : 0;
}

} // namespace Yul
