#include "core/Yul.h"

#include "core/Const.h"
#include "core/Format.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/Resrc.h"
#include "core/StrLib.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include <sys/time.h>
#include <unistd.h>

namespace Yul {
namespace {

struct LevelName
{
    std::string_view name;
    int level;
};

/// Level names as settings write them; "debug" stands for the highest level.
constexpr LevelName LEVEL_NAMES[] = {
    {"none", Yul::NONE},     {"print", Yul::PRINT},   {"error", Yul::ERROR},   {"warn", Yul::WARN},
    {"mess", Yul::MESS},     {"out1", Yul::OUT1},     {"out2", Yul::OUT2},     {"out3", Yul::OUT3},
    {"out4", Yul::OUT4},     {"out5", Yul::OUT5},     {"out6", Yul::OUT6},     {"out7", Yul::OUT7},
    {"out8", Yul::OUT8},     {"debug1", Yul::DEBUG1}, {"debug2", Yul::DEBUG2}, {"debug3", Yul::DEBUG3},
    {"debug4", Yul::DEBUG4}, {"debug5", Yul::DEBUG5}, {"debug6", Yul::DEBUG6}, {"debug7", Yul::DEBUG7},
    {"debug8", Yul::DEBUG8}, {"debug", Yul::DEBUG8},
};

constexpr std::uint32_t DEBUG_LEVELS = 0xff000; // the bits of DEBUG1 to DEBUG8
constexpr std::size_t PROGRAM_NAME_SIZE = 24;
constexpr std::size_t HOST_NAME_SIZE = 40;
constexpr int VIRTUAL_MEMORY_WORD = 23; // of /proc/<pid>/stat, proc(5)

/// The process-wide state.
struct State
{
    std::uint32_t message_mask = 0x3f; // levels 1 to 6
    int error = Yul::NOERR;
    std::string program_name;
    std::string database_path;
    int init_time = Const::MISS;
    Resrc resrc;
};

State & state()
{
    static State the_state;
    return the_state;
}

/// The mask bit of a level; shift counts are taken modulo 32.
std::uint32_t bitOf(int level)
{
    return std::uint32_t{1} << ((static_cast<std::uint32_t>(level) - 1U) & 31U);
}

bool hasBit(int level)
{
    return (state().message_mask & bitOf(level)) != 0;
}

/// Level DEBUGn; any n is taken, as shift counts are.
int debugLevel(int n)
{
    return static_cast<int>(static_cast<std::uint32_t>(n) + Yul::OUT8);
}

LevelName const * findLevel(std::string_view name)
{
    auto const * const found =
        std::find_if(std::begin(LEVEL_NAMES), std::end(LEVEL_NAMES),
                     [&](LevelName const & row) { return detail::sameIgnoringCase(row.name, name); });
    return found != std::end(LEVEL_NAMES) ? found : nullptr;
}

void writeOut(char const * format, std::va_list list)
{
    detail::VarArgs args(list);
    detail::writeOut(detail::vformat(format, args));
}

/// Writes to the error stream, which "yulerrtoout" turns into standard output at any time.
void writeErr(char const * format, std::va_list list)
{
    detail::VarArgs args(list);
    std::string const text = detail::vformat(format, args);
    if (std::getenv("yulerrtoout") != nullptr)
        detail::writeOut(text);
    else
        detail::writeErr(text);
}

} // namespace

int Yul::setMessageLevel(int level)
{
    state().message_mask = (std::uint32_t{1} << (static_cast<std::uint32_t>(level) & 31U)) - 1;
    return 1;
}

int Yul::setMessageLevel(char const * text)
{
    for (std::string_view item : detail::split(detail::viewOf(text), ',')) {
        char const sign = !item.empty() && (item.front() == '+' || item.front() == '-') ? item.front() : '\0';
        if (sign != '\0')
            item.remove_prefix(1);
        LevelName const * const found = findLevel(item);
        if (found == nullptr)
            continue;
        if (sign == '+')
            state().message_mask |= bitOf(found->level);
        else if (sign == '-')
            state().message_mask ^= bitOf(found->level);
        else
            setMessageLevel(found->level);
    }
    return 1;
}

unsigned Yul::getMessageLevel()
{
    return state().message_mask;
}

bool Yul::checkMessage(int level)
{
    return hasBit(level);
}

bool Yul::isDebug()
{
    return (state().message_mask & DEBUG_LEVELS) != 0;
}

bool Yul::isDebug(int n)
{
    return hasBit(debugLevel(n));
}

int Yul::outMessage(char const * format, ...)
{
    if (hasBit(PRINT)) {
        std::va_list list;
        va_start(list, format);
        writeOut(format, list);
        va_end(list);
    }
    return 1;
}

int Yul::outMessage(int level, char const * format, ...)
{
    if (hasBit(level)) {
        std::va_list list;
        va_start(list, format);
        writeOut(format, list);
        va_end(list);
    }
    return 1;
}

int Yul::outWarning(char const * format, ...)
{
    if (hasBit(WARN)) {
        std::va_list list;
        va_start(list, format);
        writeErr(format, list);
        va_end(list);
    }
    return 1;
}

int Yul::outError(char const * format, ...)
{
    std::va_list list;
    va_start(list, format);
    writeErr(format, list);
    va_end(list);
    return 1;
}

int Yul::outDebug(char const * format, ...)
{
    if (hasBit(DEBUG1)) {
        std::va_list list;
        va_start(list, format);
        writeOut(format, list);
        va_end(list);
    }
    return 1;
}

int Yul::outDebug(int n, char const * format, ...)
{
    if (isDebug(n)) {
        std::va_list list;
        va_start(list, format);
        writeOut(format, list);
        va_end(list);
    }
    return 1;
}

int Yul::print(char const * text)
{
    detail::writeOut(detail::viewOf(text));
    return 1;
}

int Yul::setError(int code)
{
    state().error = code;
    return 1;
}

bool Yul::getError()
{
    return state().error != NOERR;
}

void Yul::exit(Error code)
{
    detail::runExitHook();
    std::exit(code);
}

int Yul::setProgramName(char const * name)
{
    state().program_name = detail::viewOf(name).substr(0, PROGRAM_NAME_SIZE - 1);
    return 1;
}

char const * Yul::getProgramName()
{
    return state().program_name.empty() ? "Yul" : state().program_name.c_str();
}

int Yul::setDatabasePath(char const * path)
{
    state().database_path = std::string(detail::viewOf(path));
    return 1;
}

char const * Yul::getDatabasePath()
{
    return state().database_path.c_str();
}

int Yul::setInitTime(int time)
{
    state().init_time = time;
    return 1;
}

int Yul::getInitTime()
{
    return state().init_time;
}

double Yul::getTime()
{
    timeval now{};
    gettimeofday(&now, nullptr);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_usec) / 1e6;
}

int Yul::getVirtMem()
{
    std::ifstream stat(detail::format("/proc/%d/stat", static_cast<int>(getpid())));
    std::string word;
    for (int i = 0; i < VIRTUAL_MEMORY_WORD; ++i)
        if (!(stat >> word))
            return 0;
    return detail::toInt(word);
}

char const * Yul::getComputerName()
{
    static std::array<char, HOST_NAME_SIZE> name{};
    name.fill('\0');
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

int Yul::sleep(float seconds)
{
    constexpr double LONGEST = 4294967295.0; // microseconds that usleep takes
    double const microseconds = std::min(static_cast<double>(seconds) * 1e6, LONGEST);
    if (microseconds > 0)
        usleep(static_cast<useconds_t>(microseconds));
    return 1;
}

int Yul::pause()
{
    detail::runFlushHook();
    std::getchar();
    return 1;
}

char const * Yul::getVersion()
{
    return "6.74.6-LINUX-X11";
}

Resrc & Yul::resrc()
{
    return state().resrc;
}

char const * Yul::getResrc(char const * name)
{
    return resrc().get(name);
}

int Yul::getResrc(char const * name, int def)
{
    return resrc().get(name, def);
}

float Yul::getResrc(char const * name, float def)
{
    return resrc().get(name, def);
}

char const * Yul::getResrc(char const * name, char const * def)
{
    return resrc().get(name, def);
}

bool Yul::getResrcBool(char const * name)
{
    return resrc().getBool(name);
}

int Yul::getResrcType(char const * name)
{
    return resrc().getType(name);
}

int Yul::addResrc(char const * name, char const * value, int type)
{
    return resrc().add(name, value, type);
}

int Yul::putResrc(char const * name, char const * value)
{
    return resrc().put(name, value);
}

int Yul::setResrc(char const * name, char const * value)
{
    return resrc().set(name, value);
}

int Yul::appendResrc(char const * name, char const * value)
{
    return resrc().append(name, value, '\n');
}

int Yul::printAllResrc()
{
    return resrc().printAll();
}

int Yul::rewindResrc()
{
    return resrc().rewind();
}

char const * Yul::nextResrc()
{
    return resrc().getNext();
}

} // namespace Yul
