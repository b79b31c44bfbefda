#include "grid/GridYulFile.h"

#include "core/StrLib.h"
#include "core/Yul.h"
#include "grid/Grids.h"
#include "grid/native/Values.h"

#include <array>
#include <exception>
#include <string_view>

namespace Yul {
namespace {

using detail::native::Found;

constexpr std::size_t MAX_FORMAT = 15;

/// Runs an operation that may run out of memory; 0 with an error message then.
template <class Operation> int guarded(char const * operation_name, Operation operation)
{
    try {
        return operation() ? 1 : 0;
    } catch (std::exception const &) {
        Yul::outError("GridYulFile::%s: Out of memory\n", operation_name);
        return 0;
    }
}

} // namespace

int GridYulFile::open(char const * name, int mode, int data_format)
{
    return guarded("open", [&] {
        close();
        char const * const shown = name != nullptr ? name : "";
        int const wanted = data_format == 0 ? TEXT : data_format;
        if (mode != READ && mode != WRITE) {
            Yul::outWarning("GridYulFile::open: Invalid mode: %d\n", mode);
            return false;
        }
        if (wanted < TEXT || wanted > (mode == WRITE ? BINARY : SEPARATE)) {
            Yul::outWarning("GridYulFile::open: Invalid format: %d\n", data_format);
            return false;
        }
        auto reading = mode == READ ? std::make_unique_for_overwrite<detail::native::Input>() : nullptr;
        if ((mode == READ ? reading->open(name) : output.open(name, "w")) == 0) {
            Yul::outWarning("GridYulFile::open: Unable to open: %s\n", shown);
            return false;
        }
        format = wanted;
        input = std::move(reading);
        next_part = mode == READ ? Next::HEADER : Next::NOTHING;
        return true;
    });
}

int GridYulFile::close()
{
    input = nullptr;
    next_part = Next::NOTHING;
    if (output.close() == 1)
        return 1;
    Yul::outWarning("GridYulFile::close: Unable to write: %s\n", output.name().c_str());
    return 0;
}

int GridYulFile::setVer(int value)
{
    if (value < 1 || value > detail::native::NEWEST_VERSION)
        return 0;
    version = value;
    return 1;
}

int GridYulFile::setFormat(char const * text)
{
    auto const kept = detail::viewOf(text).substr(0, MAX_FORMAT);
    if (!kept.empty() && !detail::native::isValueFormat(kept))
        return 0;
    value_format = kept;
    return 1;
}

/// Ends the reading with a warning, if there is anything left to say.
bool GridYulFile::fail(char const * operation, std::string const & fault)
{
    next_part = Next::UNREADABLE;
    if (!fault.empty())
        Yul::outWarning("GridYulFile::%s: %s: %s\n", operation, input->name().c_str(), fault.c_str());
    return false;
}

/// Makes the next header known. A grid is given what the header says, also when it is faulty.
bool GridYulFile::findNext(char const * operation, Grid * grid)
{
    if (input == nullptr) {
        Yul::outWarning("GridYulFile::%s: No file is open for reading\n", operation);
        return false;
    }
    if (next_part == Next::VALUES) {
        next_part = Next::HEADER;
        if (auto const fault = skipValues(*input, header); !fault.empty())
            return fail(operation, fault);
    }
    if (next_part == Next::HEADER) {
        std::string fault;
        auto const found = readHeader(*input, header, fault);
        next_part = found == Found::HEADER ? Next::KNOWN : Next::NOTHING;
        if (found == Found::FAULT) {
            if (grid != nullptr)
                describe(header, *grid);
            return fail(operation, fault);
        }
    }
    if (next_part == Next::KNOWN && grid != nullptr)
        describe(header, *grid);
    return next_part == Next::KNOWN;
}

int GridYulFile::peek(Grid & grid)
{
    return guarded("peek", [&] { return findNext("peek", &grid); });
}

int GridYulFile::readHdr(Grid & grid)
{
    return guarded("readHdr", [&] {
        if (!findNext("readHdr", &grid))
            return false;
        next_part = Next::VALUES;
        return true;
    });
}

int GridYulFile::readData(Grid & grid)
{
    return guarded("readData", [&] {
        if (next_part != Next::VALUES) {
            Yul::outWarning("GridYulFile::readData: No header has been read\n");
            return false;
        }
        next_part = Next::HEADER;
        auto const fault = readValues(*input, header, grid);
        return fault.empty() ? grid.isData() : fail("readData", fault);
    });
}

int GridYulFile::next()
{
    return guarded("next", [&] {
        if (!findNext("next", nullptr))
            return false;
        next_part = Next::VALUES;
        return true;
    });
}

int GridYulFile::read(Grid & grid)
{
    return readHdr(grid) == 1 ? readData(grid) : 0;
}

int GridYulFile::read(char const * name, int data_format, Grid & grid)
{
    return open(name, READ, data_format) == 1 ? read(grid) : 0;
}

int GridYulFile::read(GridSpec const & spec, Grid & grid)
{
    return guarded("read", [&] {
        while (readHdr(grid) == 1) {
            Grid found; // without what the grid may have kept of another one
            detail::native::describe(header, found);
            if (found.meets(spec))
                return readData(grid) == 1;
        }
        return false;
    });
}

int GridYulFile::read(Grids & grids)
{
    return guarded("read", [&] {
        int count = 0;
        for (Grid grid; read(grid) == 1; grid = Grid(), ++count)
            grids.all().push_back(std::move(grid));
        return count > 0 && next_part == Next::NOTHING;
    });
}

int GridYulFile::rewind()
{
    if (input == nullptr || input->rewind() == 0)
        return 0;
    next_part = Next::HEADER;
    return 1;
}

int GridYulFile::write(Grid const & grid)
{
    return guarded("write", [&] {
        if (!output.isOpen()) {
            Yul::outWarning("GridYulFile::write: No file is open for writing\n");
            return false;
        }
        std::string fault;
        auto const lines = detail::native::writeHeader(grid, version, format, fault);
        bool const is_written = fault.empty() && output.write(lines) == 1 &&
                                detail::native::writeValues(output, grid, format, value_format) &&
                                output.flush() == 1;
        if (!is_written)
            Yul::outWarning("GridYulFile::write: Unable to write: %s%s%s\n", output.name().c_str(),
                            fault.empty() ? "" : ": ", fault.c_str());
        return is_written;
    });
}

int GridYulFile::write(char const * name, int data_format, Grid const & grid)
{
    return open(name, WRITE, data_format) == 1 ? write(grid) : 0;
}

int GridYulFile::checkType(char const * name)
{
    File file;
    std::array<char, detail::native::MAGIC.size()> head;
    if (file.open(name, "r") == 0)
        return 0;
    return std::string_view(head.data(), file.read(head.data(), head.size())) == detail::native::MAGIC ? 1
                                                                                                       : 0;
}

} // namespace Yul
