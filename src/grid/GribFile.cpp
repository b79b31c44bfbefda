#include "grid/GribFile.h"

#include "core/File.h"
#include "core/Yul.h"
#include "grid/Grids.h"
#include "grid/grib/Edition2.h"
#include "grid/grib/Erratic.h"
#include "grid/grib/FromGrid.h"
#include "grid/grib/GridDomain.h"
#include "grid/grib/Starts.h"
#include "grid/grib/packing/Png.h"

#include <algorithm>
#include <array>
#include <new>
#include <span>
#include <string_view>
#include <utility>

namespace Yul {
namespace {

constexpr int READ = 0; // modes of `open`
constexpr int WRITE = 1;
constexpr int MAX_PLACES = 30;
constexpr std::size_t TYPE_OCTETS = 200; // at the head of a file in which "GRIB" is looked for

/// Runs an operation that may run out of memory; 0 with an error message then.
template <class Operation> int guarded(char const * operation_name, Operation operation)
{
    try {
        return operation();
    } catch (std::bad_alloc const &) {
        Yul::outError("GribFile::%s: Out of memory\n", operation_name);
        return 0;
    }
}

/// The reference time as the date decoder reads it, no more precise than it is: "12Z 14 NOV 2026".
int makeDatim(Grid & grid)
{
    DateVal precise = grid.getDateVal();
    if (precise.getSecond() == 0)
        precise.setSecond(Const::MISS);
    if (precise.getMinute() == 0 && detail::isMissing(precise.getSecond()))
        precise.setMinute(Const::MISS);
    String text;
    Date(precise).toText(text);
    return grid.setDatim(text.get());
}

/// The long name with the units in brackets.
int makeInfo(Grid & grid)
{
    Variable const & var = grid.getVar();
    bool const has_long_name = *var.getLongName() != '\0';
    grid.setInfo(has_long_name ? var.getLongName() : var.getName());
    String const units(var.getUnits());
    return units.length() > 0 ? grid.setUnits(units.get()) : 1;
}

} // namespace

int GribFile::open(char const * name)
{
    return open(Filename(name));
}

int GribFile::open(char const * name, int mode)
{
    if (mode == READ)
        return open(name);
    close();
    if (mode != WRITE) {
        Yul::outWarning("GribFile::open: Invalid mode: %d\n", mode);
        return 0;
    }
    if (output.open(name, "w") == 0) {
        Yul::outWarning("GribFile::open: Unable to open: %s\n", name != nullptr ? name : "");
        return 0;
    }
    return 1;
}

int GribFile::open(Filename const & names)
{
    close();
    files = names;
    next_file = 0;
    if (files.getNum() == 0)
        Yul::outWarning("GribFile::open: No file name\n");
    return openNextFile() ? 1 : 0;
}

/// Opens the next file of the list; one that cannot be opened is named and passed over.
bool GribFile::openNextFile()
{
    while (next_file < files.getNum()) {
        char const * const name = files.get(next_file++);
        if (reader.open(name) != 0) {
            takeIndex();
            return true;
        }
        Yul::outWarning("GribFile::open: Unable to open: %s\n", name);
    }
    return false;
}

/// Gives the reader the index of the file that is open.
void GribFile::takeIndex()
{
    reader.setStarts(uses_index ? detail::grib::readStarts(files.getIndex(next_file - 1))
                                : std::vector<std::uint64_t>());
}

int GribFile::useHdrFile(int use)
{
    uses_index = use != 0;
    if (reader.isOpen())
        takeIndex();
    return 1;
}

int GribFile::close()
{
    reader.close();
    files.init();
    has_field = has_loc = false;
    is_bad = false;
    header.init();
    if (output.close() == 1)
        return 1;
    Yul::outWarning("GribFile::close: Unable to write: %s\n", output.name().c_str());
    return 0;
}

int GribFile::rewind()
{
    has_field = false;
    is_bad = false;
    if (files.getNum() < 2)
        return reader.rewind();
    next_file = 0;
    return openNextFile() ? 1 : 0;
}

long GribFile::getLoc() const noexcept
{
    return has_loc ? static_cast<long>(field.message) : Const::MISS;
}

int GribFile::setLoc(long octet)
{
    if (octet < 0 || files.getNum() > 1 || reader.rewind(static_cast<std::uint64_t>(octet)) == 0)
        return 0;
    has_field = is_bad = false;
    return 1;
}

void GribFile::printWarnings()
{
    for (auto const & line : reader.takeWarnings())
        Yul::outWarning("%s", line.c_str());
}

void GribFile::warnSkipped(std::string const & reason)
{
    Yul::outWarning("GribFile::read: %s: field of the message at octet %llu skipped: %s\n",
                    reader.name().c_str(), static_cast<unsigned long long>(field.message), reason.c_str());
}

/// Finds the next field that can be delivered, as far as its headers tell.
bool GribFile::findNext()
{
    is_bad = false;
    if (has_field)
        return true;
    while (reader.isOpen()) {
        bool const is_found = reader.next(field);
        printWarnings();
        if (!is_found) {
            if (!openNextFile())
                return false;
            continue;
        }
        std::string const fault =
            field.refusal.empty() ? detail::grib::makeDomain(field.geometry, domain) : field.refusal;
        if (!fault.empty()) {
            warnSkipped(fault);
            continue;
        }
        if (field.edition == 2 && Yul::isDebug(1))
            Yul::outDebug(1, "GribFile::readDRS: %s\n",
                          detail::grib::packingName(field.packing.template_number));
        header.set(field, params);
        has_field = has_loc = true;
        return true;
    }
    return false;
}

/// Fills everything but the values.
void GribFile::describe(Grid & grid) const
{
    grid.reset();
    grid.setVersion(header.getEdition());
    grid.setSource(header.getCentre());
    grid.setModel(header.getModel());
    grid.setGenName(header.getGenName());
    grid.setType(header.getGridType());
    grid.setForeTime(header.getForeTime());
    grid.setDate(header.getDate());
    grid.setLevel(header.getLevel());
    grid.setVar(header.getVar());
    grid.setDomain(domain);
    makeDatim(grid);
    makeInfo(grid);
}

bool GribFile::unpack(Grid & grid)
{
    float * const values = grid.prepareData(field.geometry.nx, field.geometry.ny);
    if (values == nullptr)
        return false;
    std::span<float> const all(values, static_cast<std::size_t>(field.points));
    std::string const fault = reader.unpack(field, all);
    if (!fault.empty()) {
        if (fault == detail::grib::NOT_A_PNG)
            Yul::outWarning("%s\n", fault.c_str());
        warnSkipped(fault);
        grid.freeData();
        return false;
    }
    is_bad =
        max_bad > 0 && detail::grib::isErratic(all, detail::grib::jumpOf(field.packing, bad_jump), max_bad);
    return true;
}

/// Unpacks the values of a grid that has been described; false for bad ones as well.
bool GribFile::takeValues(Grid & grid)
{
    if (!unpack(grid))
        return false;
    if (is_bad)
        Yul::outWarning("GribFile::read: %s: message at octet %llu holds bad data\n", reader.name().c_str(),
                        static_cast<unsigned long long>(field.message));
    return !is_bad;
}

bool GribFile::readNext(GridSpec const * spec, Grid & grid)
{
    while (findNext()) {
        has_field = false;
        describe(grid);
        if (spec != nullptr && !grid.meets(*spec))
            continue;
        if (takeValues(grid))
            return true;
        if (is_bad)
            break;
    }
    grid.freeData();
    return false;
}

/// The field that was peeked at, and no other: 0 where its values cannot be delivered.
int GribFile::readData(Grid & grid)
{
    return guarded("read", [&] {
        has_field = false;
        describe(grid);
        if (takeValues(grid))
            return 1;
        grid.freeData();
        return 0;
    });
}

int GribFile::read(Grid & grid)
{
    return guarded("read", [&] { return readNext(nullptr, grid) ? 1 : 0; });
}

int GribFile::read(char const * name, Grid & grid)
{
    return open(name) != 0 ? read(grid) : 0;
}

int GribFile::read(GridSpec const & spec, Grid & grid)
{
    return guarded("read", [&] { return readNext(&spec, grid) ? 1 : 0; });
}

int GribFile::read(Grids & grids)
{
    return guarded("read", [&] {
        int count = 0;
        Grid grid;
        for (;;) {
            if (readNext(nullptr, grid)) {
                grids.add(grid);
                ++count;
            } else if (!is_bad)
                return count > 0 ? 1 : 0;
        }
    });
}

int GribFile::peek(Grid & grid)
{
    return guarded("peek", [&] {
        if (!findNext())
            return 0;
        describe(grid);
        grid.setSize(field.geometry.nx, field.geometry.ny);
        return 1;
    });
}

int GribFile::next()
{
    return guarded("next", [&] {
        bool const is_found = findNext();
        has_field = false;
        return is_found ? 1 : 0;
    });
}

int GribFile::setMaxBad(int max)
{
    return setMaxBad(max, 0);
}

int GribFile::setMaxBad(int max, float threshold)
{
    max_bad = std::max(max, 0);
    bad_jump = threshold > 0 ? threshold : 0;
    return 1;
}

int GribFile::setParam(int edition, GribParam const & row)
{
    return params.add(edition, row);
}

int GribFile::write(Grid const & grid)
{
    return guarded("write", [&] {
        detail::grib::Field description;
        detail::grib::Range1 range;
        std::vector<detail::grib::Octet> message;
        std::string fault =
            output.isOpen() ? detail::grib::describe1(grid, description, range) : "no file is open";
        if (fault.empty())
            fault = detail::grib::encode1(description, range, packing_choice, grid.getValues(), message);
        std::string_view const octets(reinterpret_cast<char const *>(message.data()), message.size());
        if (fault.empty() && (output.write(octets) == 0 || output.flush() == 0))
            fault = output.name() + " does not take it";
        if (!fault.empty())
            Yul::outWarning("GribFile::write: Unable to write grid: %s\n", fault.c_str());
        return fault.empty() ? 1 : 0;
    });
}

int GribFile::setValueBits(int bits)
{
    if (bits < 0 || bits > detail::grib::PackingChoice::MAX_BITS)
        return 0;
    packing_choice.bits = bits > 0 ? std::optional(bits) : std::nullopt;
    return 1;
}

int GribFile::setDecimalScale(int places)
{
    bool const is_none = places == Const::MISS;
    if (!is_none && (places < -MAX_PLACES || places > MAX_PLACES))
        return 0;
    packing_choice.decimal = is_none ? std::nullopt : std::optional(places);
    return 1;
}

int GribFile::checkType(char const * name)
{
    File file;
    if (file.open(name, "r") == 0)
        return 0;
    std::array<char, TYPE_OCTETS> octets;
    std::string_view const head(octets.data(), file.read(octets.data(), octets.size()));
    return head.find("GRIB") != std::string_view::npos ? 1 : 0;
}

} // namespace Yul
