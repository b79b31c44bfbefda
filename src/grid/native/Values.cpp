#include "grid/native/Values.h"

#include "core/Format.h"
#include "core/Number.h"
#include "core/Scan.h"
#include "grid/Grid.h"
#include "grid/GridKernels.h"
#include "grid/PieceOrder.h"
#include "grid/native/ByteOrder.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <span>
#include <vector>

namespace Yul::detail::native {
namespace {

constexpr std::size_t OCTETS = sizeof(float);
/// Values that are read and written at once: few enough for the second cache, where the octets are turned round.
constexpr std::size_t READ_AT_ONCE = std::size_t{1} << 15;
constexpr std::size_t WRITTEN_AT_ONCE = std::size_t{1} << 17;
/// The longest number that counts as one.
constexpr std::size_t MAX_NUMBER = 8192;
constexpr std::size_t MAX_DATA_LINE = 1000;

constexpr char const * CUT_OFF = "the values are cut off";

using Fault = std::string;

std::size_t countOf(Header const & header)
{
    return static_cast<std::size_t>(header.domain.nx) * static_cast<std::size_t>(header.domain.ny);
}

// Reading ---------------------------------------------------------------------------------------------------

/// Passes over blanks; false at the end of the file.
bool skipBlanks(Input & input)
{
    for (;;) {
        auto const ahead = input.look(1);
        auto const blanks = std::ranges::find_if_not(ahead, isBlank) - ahead.begin();
        input.drop(static_cast<std::size_t>(blanks));
        if (ahead.empty() || static_cast<std::size_t>(blanks) < ahead.size())
            return !ahead.empty();
    }
}

/// Reads one number and leaves the blank behind it; a number that nothing ends may have lost its last digits.
Fault readNumber(Input & input, float & value, bool may_end_file)
{
    if (!skipBlanks(input))
        return CUT_OFF;
    auto const ahead = input.look(MAX_NUMBER);
    auto const * const last = ahead.data() + ahead.size();
    bool const has_plus = ahead.size() > 1 && ahead[0] == '+' && (isDigit(ahead[1]) || ahead[1] == '.');
    auto const * const first = ahead.data() + (has_plus ? 1 : 0);
    auto const [end, error] = std::from_chars(first, last, value);
    auto const length = static_cast<std::size_t>(end - ahead.data());
    if (error == std::errc::result_out_of_range)
        value = toFloat(ahead.substr(0, length));
    else if (error != std::errc())
        return "no number where a value should be";
    value = orMiss(value);
    if (end == last && !(may_end_file && ahead.size() < MAX_NUMBER))
        return CUT_OFF;
    if (end != last && !isBlank(*end))
        return "no number where a value should be";
    input.drop(length);
    return {};
}

Fault readText(Input & input, std::span<float> values, bool may_end_file = false)
{
    for (auto & value : values)
        if (auto fault = readNumber(input, value, may_end_file); !fault.empty())
            return fault;
    return {};
}

char * octetsOf(std::span<float> values)
{
    return reinterpret_cast<char *>(values.data());
}

/// Values of a file that can be read at any place.
Fault readBinary(Input & input, std::span<float> values)
{
    PieceOrder const pieces(values.size(), READ_AT_ONCE, values.size_bytes(),
                            [&](std::uint64_t octet) { return input.isAtHand(octet); });
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        auto const [first, count] = pieces[i];
        auto const piece = values.subspan(first, count);
        if (input.readAhead(first * OCTETS, octetsOf(piece), piece.size_bytes()) < piece.size_bytes())
            return CUT_OFF;
        toMachineOrder(piece.data(), piece.data(), piece.size());
    }
    return input.skip(values.size_bytes()) ? "" : CUT_OFF;
}

/// What follows the last value: a newline behind octets, blanks behind numbers.
Fault readEnd(Input & input, int form)
{
    if (form == TEXT) {
        static_cast<void>(skipBlanks(input));
        return {};
    }
    auto const ahead = input.look(1);
    if (ahead.empty())
        return CUT_OFF;
    if (ahead[0] != '\n')
        return "no newline behind the values";
    input.drop(1);
    return {};
}

/// The fewest octets that so many values and their end can have.
std::uint64_t leastOctets(int form, std::size_t count)
{
    return form == BINARY ? std::uint64_t{count} * OCTETS + 1 : std::uint64_t{count} * 2;
}

/// Values of a file whose size is known.
Fault readKnown(Input & input, Header const & header, std::span<float> values)
{
    auto fault = header.form == BINARY ? readBinary(input, values) : readText(input, values);
    return fault.empty() ? readEnd(input, header.form) : fault;
}

/// The values that come next on a pipe.
Fault readNext(Input & input, int form, std::span<float> values)
{
    if (form == TEXT)
        return readText(input, values);
    if (input.read(octetsOf(values), values.size_bytes()) < values.size_bytes())
        return CUT_OFF;
    toMachineOrder(values.data(), values.data(), values.size());
    return {};
}

/// Values of a pipe: memory is taken as they come.
Fault readGrowing(Input & input, Header const & header, std::vector<float> & values)
{
    auto const count = countOf(header);
    while (values.size() < count) {
        auto const at = values.size();
        values.resize(std::min(count, at + READ_AT_ONCE));
        if (auto fault = readNext(input, header.form, std::span(values).subspan(at)); !fault.empty())
            return fault;
    }
    return readEnd(input, header.form);
}

/// The line that names a file of values.
struct DataLine
{
    std::string name;
    std::string type;
    long offset = 0;
    int row_flag = 0;
    int column_flag = 0;
};

Fault readDataLine(Input & input, DataLine & line)
{
    auto const text = input.readLine(MAX_DATA_LINE);
    if (!text)
        return CUT_OFF;
    bool const is_read = scan(*text, "%s %s %ld %d %d", &line.name, &line.type, &line.offset, &line.row_flag,
                              &line.column_flag) == 5;
    return is_read && line.offset >= 0 ? "" : "no file of values is named: " + *text;
}

Fault openData(Input & data, DataLine const & line)
{
    if (!File::isRegular(line.name.c_str()) || data.open(line.name.c_str()) == 0)
        return "unable to open the file of values: " + line.name;
    return data.skip(static_cast<std::uint64_t>(line.offset)) ? "" : CUT_OFF;
}

/// Values in a file of their own, in the machine's octet order or as text.
Fault readSeparate(Input & input, Header const & header, Grid & grid)
{
    DataLine line;
    auto fault = readDataLine(input, line);
    auto const data = std::make_unique_for_overwrite<Input>();
    if (fault.empty())
        fault = openData(*data, line);
    if (!fault.empty())
        return fault;

    bool const is_text = line.type.starts_with('A');
    auto const count = countOf(header);
    if (*data->left() < (is_text ? leastOctets(TEXT, count) - 1 : count * OCTETS))
        return CUT_OFF;
    auto * const values = grid.prepareData(header.domain.nx, header.domain.ny);
    auto const width = static_cast<std::size_t>(header.domain.nx);
    auto const rows = static_cast<std::size_t>(header.domain.ny);
    for (std::size_t i = 0; values != nullptr && fault.empty() && i < rows; ++i) {
        std::span<float> const row(values + (line.row_flag == 1 ? i : rows - 1 - i) * width, width);
        if (is_text)
            fault = readText(*data, row, true);
        else if (data->read(reinterpret_cast<char *>(row.data()), width * OCTETS) < width * OCTETS)
            fault = CUT_OFF;
        if (line.column_flag != 1)
            std::ranges::reverse(row);
    }
    return fault;
}

Fault readTogether(Input & input, Header const & header, Grid & grid)
{
    auto const count = countOf(header);
    auto const left = input.left();
    if (left && *left < leastOctets(header.form, count))
        return CUT_OFF;
    std::vector<float> growing;
    if (!left)
        if (auto fault = readGrowing(input, header, growing); !fault.empty())
            return fault;
    auto * const values = grid.prepareData(header.domain.nx, header.domain.ny);
    if (values == nullptr)
        return {}; // said by the grid
    if (left)
        return readKnown(input, header, {values, count});
    std::ranges::copy(growing, values);
    return {};
}

// Writing ---------------------------------------------------------------------------------------------------

bool writeBinary(File & file, std::span<float const> values)
{
    if (file.reserve(values.size_bytes() + 1) == 0)
        return false;
    auto const turned = std::make_unique_for_overwrite<float[]>(std::min(WRITTEN_AT_ONCE, values.size()));
    auto const before = static_cast<std::size_t>(std::max(0LL, file.tell())) / OCTETS;
    for (std::size_t at = 0; at < values.size();) {
        // the system's own pieces of a file begin there
        std::size_t const whole = WRITTEN_AT_ONCE - (before + at) % WRITTEN_AT_ONCE;
        auto const piece = values.subspan(at, std::min(whole, values.size() - at));
        toMachineOrder(piece.data(), turned.get(), piece.size()); // the way back is the same
        if (file.write({reinterpret_cast<char const *>(turned.get()), piece.size() * OCTETS}) == 0)
            return false;
        at += piece.size();
    }
    return file.write("\n") == 1;
}

/// "%14.8e", by a quicker way for the numbers that fill it.
void appendDefault(std::string & out, double value)
{
    if (!std::isfinite(value)) {
        out += format(VALUE_FORMAT, value);
        return;
    }
    char digits[32];
    auto const end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::scientific, 8).ptr;
    out.append(digits, end);
}

bool writeText(File & file, std::span<float const> values, std::string const & value_format)
{
    bool const is_default = value_format.empty();
    std::string out;
    for (float const present : values) {
        auto const value = static_cast<double>(orMiss(present)); // a reader may not know "nan"
        if (is_default)
            appendDefault(out, value);
        else
            out += format(value_format.c_str(), value); // checked by isValueFormat
        out += '\n';
        if (out.size() >= Input::SIZE) {
            if (file.write(out) == 0)
                return false;
            out.clear();
        }
    }
    return file.write(out) == 1;
}

} // namespace

std::string readValues(Input & input, Header const & header, Grid & grid)
{
    auto fault =
        header.form == SEPARATE ? readSeparate(input, header, grid) : readTogether(input, header, grid);
    if (!fault.empty())
        grid.freeData();
    return fault;
}

std::string skipValues(Input & input, Header const & header)
{
    if (header.form == SEPARATE) {
        DataLine line;
        return readDataLine(input, line);
    }
    auto count = countOf(header);
    if (header.form == BINARY)
        return input.skip(std::uint64_t{count} * OCTETS) ? readEnd(input, BINARY) : CUT_OFF;
    for (float value = 0; count > 0; --count)
        if (auto fault = readNumber(input, value, false); !fault.empty())
            return fault;
    return readEnd(input, TEXT);
}

bool writeValues(File & file, Grid const & grid, int form, std::string const & value_format)
{
    return form == BINARY ? writeBinary(file, grid.getValues())
                          : writeText(file, grid.getValues(), value_format);
}

bool isValueFormat(std::string_view format) noexcept
{
    constexpr std::string_view FLAGS = "-+ #0";
    constexpr std::string_view DIGITS = "0123456789";
    constexpr std::string_view LETTERS = "efgEFG";
    auto const skip = [&format](std::string_view what) {
        format.remove_prefix(std::min(format.find_first_not_of(what), format.size()));
    };
    int numbers = 0;
    for (std::size_t at = format.find('%'); at != std::string_view::npos; at = format.find('%')) {
        format.remove_prefix(at + 1);
        if (!format.starts_with('%')) {
            skip(FLAGS);
            skip(DIGITS);
            if (format.starts_with('.')) {
                format.remove_prefix(1);
                skip(DIGITS);
            }
            if (format.empty() || LETTERS.find(format[0]) == std::string_view::npos)
                return false;
            ++numbers;
        }
        format.remove_prefix(1);
    }
    return numbers == 1;
}

} // namespace Yul::detail::native
