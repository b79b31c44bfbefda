// Listings of a grid on standard output.
#include "core/Format.h"
#include "core/Output.h"
#include "grid/Grid.h"
#include "grid/GridKernels.h"

#include <string>

namespace Yul {

int Grid::print() const
{
    printInfo();
    return printStats();
}

int Grid::printInfo() const
{
    String level_text;
    String fore_text;
    String date_text;
    String domain_text;
    level.toLabel(level_text);
    fore.toText(fore_text);
    date.toText(date_text);
    domain.toString(domain_text);
    detail::writeOut(detail::format("Type: %d  Source: %d  Version: %d  Model: %d %s\n", type, source,
                                    version, model, gen_name.c_str()) +
                     detail::format("Datim: %s\nInfo: %s\n", datim.c_str(), info.c_str()) +
                     detail::format("Date: %s  Forecast: %s\n", date_text.get(), fore_text.get()) +
                     detail::format("Variable: %s %d [%s]\n", var.getName(), var.getIndex(), var.getUnits()) +
                     detail::format("Level: %s\n", level_text.get()) +
                     detail::format("Size: %d x %d\nDomain: %s\n", nx, ny, domain_text.get()));
    return 1;
}

int Grid::printStats() const
{
    Range range;
    getRange(range);
    detail::writeOut(detail::format("Valid: %d  Average: %g  Minimum: %g  Maximum: %g\n", getValid(),
                                    static_cast<double>(getAverage()), static_cast<double>(range.min),
                                    static_cast<double>(range.max)));
    return 1;
}

int Grid::printData() const
{
    for (int row = 0; isData() && row < ny; ++row) {
        std::string line;
        for (int column = 0; column < nx; ++column) {
            auto const value = getValue(column, row);
            line += column > 0 ? " " : "";
            line += detail::isValid(value) ? detail::format("%g", static_cast<double>(value)) : "M";
        }
        detail::writeOut(line + '\n');
    }
    return isData() ? 1 : 0;
}

} // namespace Yul
