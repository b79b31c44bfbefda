#include "time/Timezone.h"

#include "core/Clamp.h"
#include "core/Format.h"
#include "core/Output.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "time/Civil.h"
#include "time/ZoneName.h"

#include <string>
#include <string_view>

namespace Yul {

Timezone::Timezone(char const * text)
{
    set(text);
}

int Timezone::init()
{
    *this = Timezone();
    return 1;
}

int Timezone::set(char const * text)
{
    std::string_view rest = detail::viewOf(text);
    if (rest.empty()) {
        init();
        return 0;
    }
    Timezone next;
    if (rest.front() == '-')
        next.pm = -1;
    else if (rest.front() == '+')
        next.pm = 1;
    if (next.pm != 0)
        rest.remove_prefix(1);

    std::string zone_name;
    double hours = 0.0;
    detail::scan(rest, "%4[^:]:%lf", &zone_name, &hours);
    detail::copyZoneName(next.name, zone_name);
    // Through a float, so that 4.1 hours are 14760 seconds and not the 14759.999... of a double.
    next.offset = detail::clampTo<int>(static_cast<float>(hours * detail::SECONDS_PER_HOUR));
    *this = next;
    return 1;
}

int Timezone::print() const
{
    detail::writeOut(detail::format("%s %d %d\n", name, pm, offset));
    return 1;
}

} // namespace Yul
