// Writing the header of a native grid file.
#include "core/Format.h"
#include "core/Number.h"
#include "core/StrLib.h"
#include "geo/Domain.h"
#include "grid/Grid.h"
#include "grid/native/Header.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Yul::detail::native {
namespace {

constexpr std::size_t MAX_UNITS = 30; // octets that are written

/// The text on one line.
std::string oneLine(std::string_view text)
{
    std::string line(text);
    std::ranges::replace(line, '\n', ' ');
    return line;
}

std::string real(float value)
{
    return format("%f", static_cast<double>(value));
}

/// The grid's date as it stood in its source; of a grid that was made here the date that it was given.
std::string dateLine(Grid const & grid)
{
    String text(grid.getDatim());
    if (trimmed(text.view()).empty() && grid.getDate().isSet())
        grid.getDate().toText(text);
    return oneLine(text.view());
}

std::string infoLine(Grid const & grid, int version, int form)
{
    std::string_view const lead = version != 3 ? "" : form == BINARY ? "3-" : "2-";
    return std::string(lead) + oneLine(grid.getInfo());
}

std::string identificationLine(Grid const & grid)
{
    auto const & level = grid.getLevel();
    auto line = format("%d %d %d %d %d %d %d %d", grid.getSource(), grid.getVersion(), grid.getModel(),
                       grid.getType(), level.getTypeCode(), level.getValueCode(),
                       grid.getForeTime().getCode(), grid.getVar().getIndex());
    auto units = std::string(grid.getUnits()).substr(0, MAX_UNITS);
    std::ranges::replace_if(units, isBlank, '_');
    return units.empty() ? line : line + ':' + units;
}

/// The keyword of versions 1 to 3 with the parameters that go with it, and a blank.
std::string keywordText(DomainVal const & domain)
{
    bool const has_plon = !isMissing(domain.plon);
    switch (domain.proj) {
    case Domain::LATLON:
        return "LL ";
    case Domain::MERC:
        return "ME ";
    case Domain::PSTEREO:
        return has_plon && domain.plon != domain.clon ? "PS:" + real(domain.plon) + ' ' : "PS ";
    case Domain::LAMB:
        if (!isMissing(domain.param[0]))
            return "LC:" + real(domain.plat) + ':' + real(domain.plon) + ':' + real(domain.param[0]) + ':' +
                   real(domain.param[1]) + ':' + real(domain.param[2]) + ' ';
        return has_plon ? "LC:" + real(domain.plon) + ' ' : "LC ";
    default:
        return "";
    }
}

std::string projectionLine(DomainVal const & domain, int version)
{
    if (version == NEWEST_VERSION) {
        String text;
        domain.toString(text);
        return std::string(text.view());
    }
    return keywordText(domain) + real(domain.clat) + ' ' + real(domain.clon) + ' ' + real(domain.dx) + ' ' +
           real(domain.dy) + format(" %d %d", domain.nx, domain.ny);
}

/// The domain of a grid, with the grid's size where it has none of its own.
DomainVal sizedDomain(Grid const & grid)
{
    DomainVal domain = grid.getDomainVal();
    if (isMissing(domain.nx) && isMissing(domain.ny)) {
        domain.nx = grid.getNx();
        domain.ny = grid.getNy();
    }
    return domain;
}

/// Why the domain would not be read back as that of the grid; empty when it is.
std::string faultOf(DomainVal const & domain, Grid const & grid, std::string const & line, int version)
{
    if (domain.isMiss())
        return "the grid has no domain";
    if (domain.nx != grid.getNx() || domain.ny != grid.getNy())
        return format("a domain of %d x %d points for a grid of %d x %d", domain.nx, domain.ny, grid.getNx(),
                      grid.getNy());
    auto const keyword = line.substr(0, line.find_first_of(":,"));
    bool const is_domain_text = version == NEWEST_VERSION;
    bool const has_word = !is_domain_text || Domain::getProj(keyword.c_str()) == domain.proj;
    auto const isWritable = [=](float value) {
        return std::isfinite(value) && !(is_domain_text && isMissing(value));
    };
    bool const has_numbers =
        std::ranges::all_of(std::array{domain.clat, domain.clon, domain.dx, domain.dy}, isWritable) &&
        std::isfinite(domain.plat) && std::isfinite(domain.plon) &&
        std::ranges::all_of(domain.param, [](float value) { return std::isfinite(value); });
    return has_word && has_numbers && line.size() <= MAX_DOMAIN ? ""
                                                                : "no header can hold its domain: " + line;
}

} // namespace

std::string writeHeader(Grid const & grid, int version, int form, std::string & fault)
{
    auto const domain = sizedDomain(grid);
    auto const projection = projectionLine(domain, version);
    fault = grid.isData() ? faultOf(domain, grid, projection, version) : "the grid has no values";
    if (!fault.empty())
        return {};
    std::string header(MAGIC);
    if (version == NEWEST_VERSION)
        header += format("%d%s", version, form == BINARY ? "B" : "");
    header += '\n' + dateLine(grid) + '\n' + infoLine(grid, version, form) + '\n';
    if (version >= 3)
        header += identificationLine(grid) + '\n';
    return header + projection + '\n';
}

} // namespace Yul::detail::native
