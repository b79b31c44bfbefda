#include "naming/NameConv.h"

#include "core/FileTool.h"
#include "core/Format.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "naming/NameTable.h"
#include "time/DateTool.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace Yul {
namespace {

constexpr std::size_t MAX_TEMPLATE = 80;
constexpr std::size_t MAX_EXTENSION = 30;
constexpr std::size_t MAX_EXTENSION2 = 20;
constexpr std::size_t MAX_KEYS = 20;
constexpr std::size_t MAX_KEY_VALUE = 19;
constexpr int MAX_NUMBER_WIDTH = 80;

/// Appends a number of at least `digits` digits; missing values are zeros.
void appendDigits(std::string & out, int value, int digits)
{
    std::array<char, 16> text{};
    std::size_t n = 0;
    auto rest = static_cast<std::uint32_t>(detail::isMissing(value) || value < 0 ? 0 : value);
    for (; rest > 0 || n < static_cast<std::size_t>(digits); rest /= 10)
        text[n++] = static_cast<char>('0' + rest % 10);
    while (n > 0)
        out += text[--n];
}

/// A value rounded down to a multiple of the step; a missing value stays missing.
int rounded(int value, int step)
{
    return step > 1 && !detail::isMissing(value) ? value / step * step : value;
}

/// Appends what a piece that is a part of the date stands for.
void appendTime(std::string & out, detail::NamePiece const & piece, Date const & date)
{
    using detail::NameCode;
    int const month = date.getMonth();
    switch (piece.code) {
    case NameCode::YEAR:
        appendDigits(out, rounded(date.getYear(), piece.count), 4);
        break;
    case NameCode::YEAR00:
        appendDigits(out, rounded(date.getYear00(), piece.count), 2);
        break;
    case NameCode::MONTH:
        appendDigits(out, rounded(month, piece.count), 2);
        break;
    case NameCode::MONTH_UPPER:
        out += detail::isMissing(month) ? "XXX" : DateTool::getMonth(month);
        break;
    case NameCode::MONTH_LOWER:
        out += detail::isMissing(month) ? "xxx" : DateTool::getMonthLower(month);
        break;
    case NameCode::DAY:
        appendDigits(out, rounded(date.getDay(), piece.count), 2);
        break;
    case NameCode::JULIAN:
        appendDigits(out, date.getJulian(), 3);
        break;
    case NameCode::HOUR:
        appendDigits(out, rounded(date.getHour(), piece.count), 2);
        break;
    case NameCode::MINUTE:
        appendDigits(out, rounded(date.getMinute(), piece.count), 2);
        break;
    default:
        break;
    }
}

std::string_view directoryAt(std::string_view list, int index, int & count)
{
    std::string_view chosen;
    for (count = 0;; ++count) {
        std::size_t const comma = list.find(',');
        if (count <= index)
            chosen = list.substr(0, comma);
        if (comma == std::string_view::npos)
            break;
        list.remove_prefix(comma + 1);
    }
    ++count;
    return chosen;
}

} // namespace

int NameConv::init()
{
    *this = NameConv();
    return 1;
}

int NameConv::set(char const * spec)
{
    std::string const text(detail::viewOf(spec)); // a copy: it may be one of this object's own texts
    init();
    if (text.empty())
        return 0;
    if (detail::sameIgnoringCase(text, "none"))
        return 1;
    if (text.front() == '@') {
        setTemplates(std::string_view(text).substr(1), "");
        return 1;
    }
    return setType(text.c_str());
}

int NameConv::setType(char const * spec)
{
    auto const items = detail::split(spec, ',');
    auto const pieces = detail::split(items[0], ':');
    std::string const type(pieces[0]);
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        char key[1] = "";
        std::string value;
        if (detail::scan(pieces[i], "%c=%19s", &key, &value) == 2)
            setKey(key[0], value.c_str());
    }
    std::string_view const header = items.size() > 1 ? items[1] : "";
    ext2 = items.size() > 2 ? items[2].substr(0, MAX_EXTENSION2) : "";
    for (std::size_t i = 3; i < items.size(); ++i)
        setOptions(items[i]);

    return setFromTable(type, header);
}

/// Templates and options of a type as the table of file names has them; without a row the type is a template itself.
int NameConv::setFromTable(std::string const & type, std::string_view header)
{
    std::string const path = detail::nameTablePath();
    detail::NameTableRow row;
    switch (detail::findNameRow(path, type, row)) {
    case detail::NameLookup::NO_FILE:
        Yul::outWarning("NameConv: No file name convention file: %s\n", path.c_str());
        setTemplates(type, "");
        return 0;
    case detail::NameLookup::NO_LINE:
        Yul::outDebug(5, "No file name conversion for: %s\n", type.c_str());
        setTemplates(type, header);
        return 1;
    case detail::NameLookup::FOUND:
        break;
    }
    if (row.is_partial) {
        std::size_t const mark = type.rfind('_');
        setExt(mark != std::string::npos ? type.c_str() + mark + 1 : "");
        Yul::outDebug(5, "File name partial match for: %s-%s ext: %s\n", row.type.c_str(), type.c_str(),
                      ext.c_str());
    } else {
        Yul::outDebug(5, "File name match for: %s\n", type.c_str());
    }
    setTemplates(row.file, row.header == "-" ? "" : row.header);
    setSizeAndExtension(row.size_and_extension);
    options_text = row.options;
    for (std::string_view const option : detail::split(options_text, ','))
        setOptions(option);
    return 1;
}

void NameConv::setTemplates(std::string_view file, std::string_view header)
{
    file_template = file.substr(0, MAX_TEMPLATE);
    header_template = header.substr(0, MAX_TEMPLATE);
    file_pieces = detail::parseNameTemplate(file_template);
    header_pieces = detail::parseNameTemplate(header_template);
    step = detail::nameTemplateStep(file_pieces);
}

void NameConv::setOptions(std::string_view option)
{
    if (option.starts_with("min="))
        late_minutes = detail::toInt(option.substr(4));
    else if (option.starts_with("size="))
        min_size = detail::toInt(option.substr(5));
}

void NameConv::setSizeAndExtension(std::string const & column)
{
    std::size_t const comma = column.find(',');
    std::string const first = column.substr(0, comma);
    std::string const second = comma != std::string::npos ? column.substr(comma + 1) : "";
    bool const is_size_first = !column.empty() && detail::isDigit(column.front());
    std::string const & size = is_size_first ? first : second;
    std::string const & extension = is_size_first ? second : first;
    if (!size.empty())
        min_size = detail::toInt(size);
    if (!extension.empty())
        ext2 = extension.substr(0, MAX_EXTENSION2);
}

int NameConv::setPath(char const * path)
{
    own_path = std::string(detail::viewOf(path));
    return 1;
}

int NameConv::setPath(String const & path)
{
    return setPath(path.get());
}

int NameConv::setExt(char const * extension)
{
    ext = std::string(detail::viewOf(extension).substr(0, MAX_EXTENSION));
    return 1;
}

int NameConv::setFore(int hour)
{
    fore_hour = hour;
    return 1;
}

NameConv::Key const * NameConv::findKey(char key) const
{
    auto const found = std::find_if(keys.begin(), keys.end(), [&](Key const & k) { return k.key == key; });
    return found != keys.end() ? &*found : nullptr;
}

int NameConv::setKey(char key, char const * value)
{
    std::string text(detail::viewOf(value).substr(0, MAX_KEY_VALUE));
    if (auto * const known_key = const_cast<Key *>(findKey(key))) {
        known_key->value = std::move(text);
        return 1;
    }
    if (keys.size() >= MAX_KEYS)
        return 0;
    keys.push_back({key, std::move(text)});
    return 1;
}

char const * NameConv::getKey(char key) const
{
    Key const * const found = findKey(key);
    return found != nullptr ? found->value.c_str() : "";
}

int NameConv::setOffset(char const * text)
{
    step = detail::nameTemplateStep(detail::parseNameTemplate(detail::viewOf(text)));
    return step;
}

int NameConv::encode(Date const & date, int which, String & name)
{
    bool const is_header = which == 1;
    std::string out;
    encodePieces(is_header ? header_pieces : file_pieces, date, out);
    name.assign(out);
    return (is_header ? header_template : file_template).empty() ? 0 : 1;
}

void NameConv::encodePieces(detail::NameTemplate const & pieces, Date const & date, std::string & out)
{
    has_directory = true;
    num_directories = 1;
    out.clear();
    for (detail::NamePiece const & piece : pieces) {
        if (piece.code == detail::NameCode::DIRECTORY)
            encodeDirectory(piece.text, out);
        else
            encodePiece(piece, date, out);
    }
    if (Yul::isDebug(6)) {
        Yul::outDebug(6, "Filename: %s\n", out.c_str());
        Yul::outDebug(6, "Date: ");
        date.print();
    }
}

void NameConv::encodePiece(detail::NamePiece const & piece, Date const & date, std::string & out) const
{
    using detail::NameCode;
    switch (piece.code) {
    case NameCode::TEXT:
        out += piece.text;
        break;
    case NameCode::EXTENSION:
        out += ext;
        break;
    case NameCode::FORECAST:
        encodeForecast(piece, out);
        break;
    case NameCode::KEY:
        encodeKey(piece, out);
        break;
    case NameCode::DIRECTORY:
        break;
    default:
        appendTime(out, piece, date);
        break;
    }
}

void NameConv::encodeForecast(detail::NamePiece const & piece, std::string & out) const
{
    Key const * const hour = findKey('f');
    int const width = std::min(piece.count, MAX_NUMBER_WIDTH);
    out += detail::format("%*.*d", width, width, hour != nullptr ? detail::toInt(hour->value) : fore_hour);
}

void NameConv::encodeKey(detail::NamePiece const & piece, std::string & out) const
{
    Key const * const key = findKey(piece.text.front());
    if (key == nullptr)
        out += '0';
    else if (piece.count >= 1)
        out.append(key->value, 0, static_cast<std::size_t>(piece.count));
    else
        out += key->value;
}

void NameConv::encodeDirectory(std::string const & resource, std::string & out)
{
    int count = 1;
    if (!own_path.empty())
        out += own_path;
    else
        out += directoryAt(Yul::getResrc(resource.c_str(), "."), directory, count);
    num_directories = std::max(num_directories, count);
    if (known.path != out)
        known = {out, FileTool::exist(out.c_str())};
    has_directory = has_directory && known.exists;
}

int NameConv::getDate(Date & date) const
{
    date = found_date;
    return 1;
}

int NameConv::print() const
{
    std::string listing =
        detail::format("File template: %s\nHeader template: %s\nExtension: %s\nPath: %s\nStep: %d\n",
                       file_template.c_str(), header_template.c_str(), ext.c_str(), own_path.c_str(), step);
    for (Key const & key : keys)
        listing += detail::format("Key %c: %s\n", key.key, key.value.c_str());
    detail::writeOut(listing);
    return 1;
}

} // namespace Yul
