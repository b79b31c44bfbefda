// Texts that stand for times: dates, header times, counts of seconds and minutes, forecast times.
#include "core/String.h"
#include "time/Date.h"
#include "time/DateTool.h"
#include "time/ForeTime.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

/// What was read has to survive writing and reading once more.
void expectSame(bool is_same)
{
    if (!is_same)
        std::abort();
}

/// Four decimals are written, so what is nearer to the next whole second comes back as that.
bool isRoundedUp(Yul::Date const & date)
{
    return std::floor(date.getSecond() + 0.00005F) != std::floor(date.getSecond());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    Yul::String out;
    Yul::Date header;
    Yul::DateTool::decode(text.c_str(), header);
    for (Yul::Date date :
         {header, Yul::Date(text.c_str()), Yul::Date(Yul::DateTool::getSeconds(text.c_str()))}) {
        date.toText(out);
        date.addMonths(Yul::DateTool::getMinutes(text.c_str()));
        date.adjustHour(static_cast<int>(size), 12);
        date.fix();
        date.computeSecs();
        date.toString(out);
        bool const has_four_digits = date.getYear() >= 1000 && date.getYear() <= 9999;
        expectSame(!has_four_digits || isRoundedUp(date) || date.isSet() != Yul::Date(out.get()).isSet() ||
                   Yul::Date(out.get()).getSeconds() == date.getSeconds());
    }
    Yul::ForeTime const fore(text.c_str());
    fore.toTimeLabel(out);
    fore.toText(out);
    expectSame(Yul::ForeTime(out.get()) == fore);
    Yul::ForeTime back;
    back.setCode(fore.getCode());
    expectSame(!back.isSet() || back == fore);
    return 0;
}
