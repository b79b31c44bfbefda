#include "grid/native/Header.h"

#include "core/Format.h"
#include "core/Number.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "geo/Domain.h"
#include "geo/DomainTool.h"
#include "grid/Grid.h"
#include "grid/VarName.h"
#include "time/DateTool.h"

#include <algorithm>
#include <array>

namespace Yul::detail::native {
namespace {

// How many characters of a line count.
constexpr std::size_t MAX_MAGIC = 150;
constexpr std::size_t MAX_DATE = 49;
constexpr std::size_t MAX_INFO = 70;
constexpr std::size_t MAX_IDENTIFICATION = 1000;

constexpr char const * CUT_OFF = "the header is cut off";

// What every grid of such a file gets, whatever the file says.
constexpr int SOURCE = 1;
constexpr int MODEL = 1;
constexpr int TYPE = 0;

struct Keyword
{
    std::string_view text;
    int proj;
    bool has_centre_lon; ///< a missing plon is the centre's longitude
};

/// Projection keywords of versions 1 to 3.
constexpr Keyword KEYWORDS[] = {
    {"LL", Domain::LATLON, true},
    {"PS", Domain::PSTEREO, true},
    {"LC", Domain::LAMB, false},
    {"ME", Domain::MERC, false},
};

/// A file without a keyword.
constexpr Keyword NO_KEYWORD{"", Domain::PSTEREO, false};

/// The next line, trimmed; none where the file ends.
std::optional<std::string> nextLine(Input & input, std::size_t limit)
{
    auto line = input.readLine(limit);
    if (line)
        line = std::string(trimmed(*line));
    return line;
}

/// The next line with something on it.
std::optional<std::string> nextFilledLine(Input & input, std::size_t limit)
{
    auto line = nextLine(input, limit);
    while (line && line->empty())
        line = nextLine(input, limit);
    return line;
}

/// What line 1 says. A bare magic leaves version and form to line 3.
bool readMagic(std::string_view line, Header & header, bool & is_bare)
{
    if (!line.starts_with(MAGIC))
        return false;
    auto const more = line.substr(MAGIC.size());
    is_bare = more.empty();
    if (!is_bare) {
        header.version = more[0] - '0';
        header.form = more.find('B', 1) != std::string_view::npos ? BINARY : TEXT;
    }
    return true;
}

/// Version and form behind a bare magic: "3-text" is version 3, another line version 2.
void readOldInfo(Header & header)
{
    int number = 0;
    std::string text;
    bool const is_third = scan(*header.info, "%d-%[^\n]", &number, &text) == 2;
    header.version = is_third ? 3 : 2;
    header.form = !is_third ? TEXT : number == 4 ? SEPARATE : number == 3 ? BINARY : TEXT;
    if (is_third)
        header.info = text;
}

/// The variable of an index; one that the table does not have is named by its numbers in GRIB, as a GRIB reader names
/// it. Without an index, -9999, it has no name.
Variable variableOf(int index)
{
    Variable var;
    int const discipline = index / 1000000 - 1;
    int const category = index / 1000 % 1000;
    int const number = index % 1000;
    if (var.set(index) == 0 && index > 0 && VarName::makeIndex(discipline, category, number) == index)
        var.set(format("VAR_%d_%d_%d", discipline, category, number).c_str(), "", "", index);
    return var;
}

void readIdentification(std::string_view line, Header & header)
{
    std::array<int, 7> n{};
    std::string last;
    auto const filled =
        scan(line, "%d %d %d %d %d %d %d %s", n.data(), &n[1], &n[2], &n[3], &n[4], &n[5], &n[6], &last);
    Level level;
    ForeTime fore;
    if (filled >= 6 && level.setCodes(n[4], n[5]) == 1)
        header.level = level;
    if (filled >= 7 && fore.setCode(n[6]) == 1)
        header.fore = fore;
    int index = 0;
    std::string units;
    auto const parts = scan(last, "%d:%s", &index, &units);
    if (parts == 0)
        return;
    Variable var = variableOf(index);
    if (parts == 2)
        var.setUnits(units.c_str());
    header.var = var;
}

Keyword const & keywordOf(std::string_view line)
{
    auto const * const found = std::ranges::find_if(
        KEYWORDS, [line](Keyword const & keyword) { return startsIgnoringCase(line, keyword.text); });
    return found != std::end(KEYWORDS) ? *found : NO_KEYWORD;
}

/// The colon numbers behind a keyword: a lone one is the longitude of the projection.
void readParameters(std::string_view text, DomainVal & domain)
{
    if (domain.proj != Domain::LAMB) {
        scan(text, "%f", &domain.plon);
        return;
    }
    float first = Const::MISS;
    if (scan(text, "%f:%f:%f:%f:%f", &first, &domain.plon, &domain.param[0], &domain.param[1],
             &domain.param[2]) == 1)
        domain.plon = first;
    else
        domain.plat = first;
}

/// The projection line of versions 1 to 3.
DomainVal readProjection(std::string_view line, int version)
{
    DomainVal domain;
    auto const & keyword = keywordOf(line);
    domain.proj = keyword.proj;
    line.remove_prefix(keyword.text.size());
    if (!keyword.text.empty() && keyword.proj != Domain::MERC && line.starts_with(':')) {
        readParameters(line.substr(1), domain);
        line.remove_prefix(std::min(line.find_first_of(" \t"), line.size()));
    }
    scan(line, "%f %f %f %f %d %d", &domain.clat, &domain.clon, &domain.dx, &domain.dy, &domain.nx,
         &domain.ny);
    if (keyword.text.empty())
        domain.dy = domain.dx;
    if (version == 1 && !isMissing(domain.clon)) // kept: longitudes of version 1 count westward
        domain.clon = -domain.clon;
    if (keyword.has_centre_lon && isMissing(domain.plon))
        domain.plon = domain.clon;
    return domain;
}

bool isSize(DomainVal const & domain)
{
    return domain.nx > 0 && domain.ny > 0 && static_cast<long>(domain.nx) * domain.ny <= Grid::MAX_VALUES;
}

bool readDate(Input & input, Header & header)
{
    header.datim = nextLine(input, MAX_DATE);
    if (header.datim)
        DateTool::decode(header.datim->c_str(), header.date);
    return header.datim.has_value();
}

bool readInfo(Input & input, Header & header, bool is_bare)
{
    header.info = nextLine(input, MAX_INFO);
    if (header.info && is_bare)
        readOldInfo(header);
    return header.info.has_value();
}

/// The fourth line, which version 1 does not have.
bool readIdentification(Input & input, Header & header)
{
    if (header.version < 2)
        return true;
    auto const line = nextFilledLine(input, MAX_IDENTIFICATION);
    if (line)
        readIdentification(*line, header);
    return line.has_value();
}

bool readDomain(Input & input, Header & header, std::string & fault)
{
    // The scan of line 4 passes over blank lines behind it.
    auto const line = header.version >= 2 ? nextFilledLine(input, MAX_DOMAIN) : nextLine(input, MAX_DOMAIN);
    if (!line) {
        fault = CUT_OFF;
        return false;
    }
    if (header.version < NEWEST_VERSION)
        header.domain = readProjection(*line, header.version);
    else if (DomainTool::decode(line->c_str(), header.domain) == 0) {
        fault.clear(); // the decoder has named it
        return false;
    }
    if (isSize(header.domain))
        return true;
    fault = format("invalid size: %d x %d", header.domain.nx, header.domain.ny);
    return false;
}

/// The lines behind the first.
bool readLines(Input & input, Header & header, bool is_bare, std::string & fault)
{
    fault = CUT_OFF;
    if (!readDate(input, header) || !readInfo(input, header, is_bare))
        return false;
    if (header.version < 1 || header.version > NEWEST_VERSION) {
        fault = format("unknown version %d", header.version);
        return false;
    }
    return readIdentification(input, header) && readDomain(input, header, fault);
}

} // namespace

Found readHeader(Input & input, Header & header, std::string & fault)
{
    header = Header();
    if (input.isAtEnd())
        return Found::END;
    bool is_bare = false;
    auto const magic = nextLine(input, MAX_MAGIC);
    if (!magic || !readMagic(*magic, header, is_bare)) {
        fault = "no grid begins here";
        return Found::FAULT;
    }
    return readLines(input, header, is_bare, fault) ? Found::HEADER : Found::FAULT;
}

void describe(Header const & header, Grid & grid)
{
    if (!header.datim)
        return;
    grid.freeData();
    grid.setDatim(header.datim->c_str());
    grid.setDate(header.date);
    if (!header.info)
        return;
    grid.setInfo(header.info->c_str());
    grid.setSource(SOURCE);
    grid.setVersion(header.version);
    grid.setModel(MODEL);
    grid.setGenName("");
    grid.setType(TYPE);
    if (header.level)
        grid.setLevel(*header.level);
    if (header.fore)
        grid.setForeTime(*header.fore);
    if (header.var)
        grid.setVar(*header.var);
    if (!header.domain.isMiss())
        grid.setDomain(header.domain);
    if (isSize(header.domain))
        grid.setSize(header.domain.nx, header.domain.ny);
}

} // namespace Yul::detail::native
