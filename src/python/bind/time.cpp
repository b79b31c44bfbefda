// Calendar times, their zones, windows, forecast times and texts.
#include "core/String.h"
#include "python/bind/Bind.h"
#include "time/Date.h"
#include "time/DateRange.h"
#include "time/DateTool.h"
#include "time/ForeTime.h"
#include "time/Timezone.h"

namespace Yul::python {

void bindDateVal(Module & m)
{
    Class<DateVal>(m, "DateVal")
        .constructor<>()
        .constructor<DateVal const &>()
        .method("init", &DateVal::init)
        .method("set", &DateVal::set)
        .method("validate", &DateVal::validate)
        .method("computeSecs", &DateVal::computeSecs)
        .print(&DateVal::print)
        .method("setYear", &DateVal::setYear)
        .method("setMonth", &DateVal::setMonth)
        .method("setDay", &DateVal::setDay)
        .method("setHour", &DateVal::setHour)
        .method("setMinute", &DateVal::setMinute)
        .method("setSecond", &DateVal::setSecond)
        .method("getYear", &DateVal::getYear)
        .method("getMonth", &DateVal::getMonth)
        .method("getDay", &DateVal::getDay)
        .method("getHour", &DateVal::getHour)
        .method("getMinute", &DateVal::getMinute)
        .method("getSecond", &DateVal::getSecond)
        .member("year", &DateVal::year)
        .member("month", &DateVal::month)
        .member("day", &DateVal::day)
        .member("hour", &DateVal::hour)
        .member("minute", &DateVal::minute)
        .member("second", &DateVal::second)
        .variable("num_day", &DateVal::num_day)
        .variable("num_day_leap", &DateVal::num_day_leap);
}

void bindDate(Module & m)
{
    Class<Date>(m, "Date")
        .base<DateVal>()
        .constructor<>()
        .constructor<int, int, int, int, int, float>()
        .constructor<Date const &>()
        .constructor<DateVal const &>()
        .constructor<char const *>()
        .constructor<long>()
        .method("set", overload<int()>(&Date::set), overload<int(Date const &)>(&Date::set),
                overload<int(int, int, int, int, int, float)>(&Date::set),
                overload<int(DateVal const &)>(&Date::set),
                overload<int(DateVal const &, int, char const *)>(&Date::set),
                overload<int(char const *)>(&Date::set), overload<int(long)>(&Date::set))
        .method("init", &Date::init)
        .method("setTime", overload<int(int, int, float)>(&Date::setTime),
                overload<int(float)>(&Date::setTime))
        .method("setDays", &Date::setDays)
        .method("getDays", &Date::getDays)
        .method("setYear", &Date::setYear)
        .method("setMonth", &Date::setMonth)
        .method("setDay", &Date::setDay)
        .method("setHour", &Date::setHour)
        .method("setMinute", &Date::setMinute)
        .method("setSecond", &Date::setSecond)
        .method("setFractionalSecond", &Date::setFractionalSecond)
        .method("getYear", &Date::getYear)
        .method("getYear00", &Date::getYear00)
        .method("getMonth", &Date::getMonth)
        .method("getDay", &Date::getDay)
        .method("getHour", &Date::getHour)
        .method("getMinute", &Date::getMinute)
        .method("getSecond", &Date::getSecond)
        .method("validate", &Date::validate)
        .method("computeSecs", &Date::computeSecs)
        .method("isSet", &Date::isSet)
        .method("getSeconds", &Date::getSeconds)
        .method("getDayOfWeek", &Date::getDayOfWeek)
        .method("getZoneOffset", &Date::getZoneOffset)
        .method("getZoneName", &Date::getZoneName)
        .compare()
        .addAssign<int>()
        .method("addYears", &Date::addYears)
        .method("addMonths", &Date::addMonths)
        .method("addDays", &Date::addDays)
        .method("addHours", &Date::addHours)
        .method("addMinutes", &Date::addMinutes)
        .method("addSeconds", &Date::addSeconds)
        .method("changeTimezone", &Date::changeTimezone)
        .method("setJulian", overload<int(int)>(&Date::setJulian))
        .staticMethod("setJulian", overload<int(int, int, int &, int &)>(&Date::setJulian))
        .method("getJulian", overload<int() const>(&Date::getJulian))
        .staticMethod("getJulian", overload<int(int, int, int)>(&Date::getJulian))
        .staticMethod("isYearLeap", &Date::isYearLeap)
        .method("isLeap", &Date::isLeap)
        .method("adjustHour", overload<int(int)>(&Date::adjustHour),
                overload<int(int, int)>(&Date::adjustHour), overload<int(int, int, int)>(&Date::adjustHour))
        .method("adjustMinute", overload<int(int, int)>(&Date::adjustMinute),
                overload<int(int, int, int)>(&Date::adjustMinute),
                overload<int(int, int, int, int)>(&Date::adjustMinute))
        .method("adjustSecond", &Date::adjustSecond)
        .method("fix", &Date::fix)
        .print(&Date::print)
        .method("printSeconds", &Date::printSeconds)
        .method("toText", overload<int(char const *, String &) const>(&Date::toText),
                overload<int(String &) const>(&Date::toText))
        .method("toString", &Date::toString)
        .staticMethod("getCurrentSeconds", &Date::getCurrentSeconds);
}

void bindTimezone(Module & m)
{
    Class<Timezone>(m, "Timezone")
        .constructor<>()
        .constructor<char const *>()
        .constructor<Timezone const &>()
        .method("init", &Timezone::init)
        .method("set", &Timezone::set)
        .method("isSet", &Timezone::isSet)
        .method("getName", &Timezone::getName)
        .method("getPM", &Timezone::getPM)
        .method("getOffset", &Timezone::getOffset)
        .print(&Timezone::print);
}

void bindForeTime(Module & m)
{
    Class<ForeTime>(m, "ForeTime")
        .constants({
            {"NONE", ForeTime::NONE},
            {"FORE", ForeTime::FORE},
            {"ANAL", ForeTime::ANAL},
            {"ACC", ForeTime::ACC},
            {"AVG", ForeTime::AVG},
            {"DIFF", ForeTime::DIFF},
            {"RANGE", ForeTime::RANGE},
            {"MAX", ForeTime::MAX},
            {"MIN", ForeTime::MIN},
            {"ANY", ForeTime::ANY},
        })
        .constructor<>()
        .constructor<char const *>()
        .constructor<int>()
        .constructor<int, int>()
        .constructor<int, int, int>()
        .constructor<ForeTime const &>()
        .method("init", &ForeTime::init)
        .method("set", overload<int(char const *)>(&ForeTime::set), overload<int(int)>(&ForeTime::set),
                overload<int(int, int)>(&ForeTime::set), overload<int(int, int, int)>(&ForeTime::set))
        .method("setSeconds", &ForeTime::setSeconds)
        .method("isSet", &ForeTime::isSet)
        .method("getType", &ForeTime::getType)
        .method("isSpan", &ForeTime::isSpan)
        .method("getFore", &ForeTime::getFore)
        .method("getFrom", &ForeTime::getFrom)
        .method("getHours", &ForeTime::getHours)
        .method("getFromHours", &ForeTime::getFromHours)
        .method("getSeconds", &ForeTime::getSeconds)
        .method("getFromSeconds", &ForeTime::getFromSeconds)
        .method("match", &ForeTime::match)
        .method("getCode", &ForeTime::getCode)
        .method("setCode", &ForeTime::setCode)
        .method("toText", &ForeTime::toText)
        .method("toTimeLabel", &ForeTime::toTimeLabel)
        .print(&ForeTime::print);
}

void bindDateTool(Module & m)
{
    Class<DateTool>(m, "DateTool")
        .constructor<>()
        .staticMethod("getSeconds", &DateTool::getSeconds)
        .staticMethod("getMinutes", &DateTool::getMinutes)
        .staticMethod("getCurrent", overload<int(String &)>(&DateTool::getCurrent),
                      overload<int(char const *, String &)>(&DateTool::getCurrent))
        .staticMethod("decode", &DateTool::decode)
        .staticMethod("decodeMonth", &DateTool::decodeMonth)
        .staticMethod("getMonth", &DateTool::getMonth)
        .staticMethod("getMonthLower", &DateTool::getMonthLower)
        .staticMethod("getMonthLong", &DateTool::getMonthLong)
        .staticMethod("getDayWeek", &DateTool::getDayWeek)
        .staticMethod(
            "createLabel",
            overload<int(char const *, Date const &, Timezone const &, int, String &)>(
                &DateTool::createLabel),
            overload<int(char const *, Date const &, Timezone const &, String &)>(&DateTool::createLabel),
            overload<int(Date const &, Timezone const &, String &)>(&DateTool::createLabel),
            overload<int(Date const &, String &)>(&DateTool::createLabel),
            overload<int(Date const &, Timezone const &, float, String &)>(&DateTool::createLabel),
            overload<int(Date const &, Timezone const &, char const *, float, String &)>(
                &DateTool::createLabel),
            overload<int(Date const &, Timezone const &, char const *, ForeTime const &, String &)>(
                &DateTool::createLabel),
            overload<int(Date const &, char const *, float, String &)>(&DateTool::createLabel))
        .staticMethod("createHourLabel", &DateTool::createHourLabel)
        .staticPrint(&DateTool::print);
}

void bindDateRange(Module & m)
{
    Class<DateRange>(m, "DateRange")
        .constructor<>()
        .constructor<Date const &, int, int>()
        .constructor<DateRange const &>()
        .method("set", overload<int(Date const &, int, int)>(&DateRange::set),
                overload<int(Date const &)>(&DateRange::set), overload<int(int, int)>(&DateRange::set))
        .method("valid", overload<bool(Date const &) const>(&DateRange::valid),
                overload<bool(int) const>(&DateRange::valid))
        .method("getCenter", &DateRange::getCenter)
        .method("getBefore", &DateRange::getBefore)
        .method("getAfter", &DateRange::getAfter)
        .print(&DateRange::print);
}

} // namespace Yul::python
