// Parameter texts of the objective analysis, and an analysis with what they set.
#include "grid/ObjectAnal.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void check(bool is_so)
{
    if (!is_so)
        std::abort();
}

void checkParameters(Yul::ObjectAnal const & anal)
{
    check(anal.getFilter() > 0);
    check(!std::isnan(anal.getRadInf()));
    check(anal.getConverg() >= 0.01F && anal.getConverg() < 1);
    check(anal.getMinSta() >= 1);
    check(std::isfinite(anal.getMissVal()));
}

/// The five numbers, written as the text that sets them.
std::string textOf(Yul::ObjectAnal const & anal)
{
    return std::to_string(anal.getFilter()) + ',' + std::to_string(anal.getRadInf()) + ',' +
           std::to_string(anal.getNumPass()) + ',' + std::to_string(anal.getConverg()) + ',' +
           std::to_string(anal.getMinSta());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    Yul::ObjectAnal anal;
    anal.set(text.c_str());
    checkParameters(anal);
    anal.init();
    anal.setParam(text.c_str());
    checkParameters(anal);
    if (std::isfinite(anal.getFilter()) && std::isfinite(anal.getRadInf())) {
        Yul::ObjectAnal same;
        check(same.set(textOf(anal).c_str()) == 1 && same.getNumPass() == anal.getNumPass() &&
              same.getMinSta() == anal.getMinSta());
    }

    Yul::Domain domain;
    domain.set(6, 5);
    anal.setDomain(domain);
    anal.setNumPass(std::min(anal.getNumPass(), 4));
    Yul::StationData reports(1);
    for (int i = 0; i < 8; ++i) {
        auto const x = static_cast<float>(i % 3) * 1.7F - 1;
        reports.add(Yul::EarthPoint(x, static_cast<float>(i) - 4));
        if (i != 5)
            reports.setValue(i, 0, x * x);
    }
    Yul::Grids grids;
    check(anal.compute(reports, grids) == 1);
    for (float const value : grids.get(0).getValues())
        check(std::isfinite(value));
    return 0;
}
