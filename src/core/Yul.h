// The library's global class: messages, errors, identity and settings.
#pragma once

namespace Yul {

class Resrc;

/// Static operations on process-wide state: which messages are printed and where, the last error code, the
/// program name, the database path, the initial time, the resource store, and small system services.
/// Operations return 1 unless they say otherwise; none reports failure. The state is not locked: one thread
/// at a time.
class Yul
{
public:
    /// Message levels. A level's bit in the mask is level - 1.
    enum Level : int {
        NONE = 0,
        PRINT,
        ERROR,
        WARN,
        MESS,
        OUT1,
        OUT2,
        OUT3,
        OUT4,
        OUT5,
        OUT6,
        OUT7,
        OUT8,
        DEBUG1,
        DEBUG2,
        DEBUG3,
        DEBUG4,
        DEBUG5,
        DEBUG6,
        DEBUG7,
        DEBUG8
    };

    /// Error codes; also the process exit statuses.
    enum Error : int {
        NOERR = 0,
        NORUN,
        MISC,
        NOMEMORY,
        NOGRAPH,
        NOINIT,
        NOFILE,
        NODBASE,
        NOWRITE,
        NOINPUT,
        NODATA,
        BADPARAM
    };

    /// Lets levels 1 to `level` through; the shift count is taken modulo 32.
    static int setMessageLevel(int level);
    /// Comma-separated level names in any case: "name" sets the mask as setMessageLevel(int) does, "+name"
    /// adds one level, "-name" flips it (a level that is off goes on). Unknown names are passed over.
    static int setMessageLevel(char const * text);
    /// The mask itself, not a level number.
    [[nodiscard]] static unsigned getMessageLevel();
    [[nodiscard]] static bool checkMessage(int level); ///< whether the mask lets the level through
    /// True when any debug level is on, or level DEBUGn.
    [[nodiscard]] static bool isDebug();
    [[nodiscard]] static bool isDebug(int n);

    /// printf-style messages; nothing is added to the format. Messages and debug texts go to standard output,
    /// warnings and errors to standard error, or to standard output while the environment variable
    /// "yulerrtoout" is defined. Errors are printed whatever the mask.
    [[gnu::format(printf, 1, 2)]] static int outMessage(char const * format, ...);
    [[gnu::format(printf, 2, 3)]] static int outMessage(int level, char const * format, ...);
    [[gnu::format(printf, 1, 2)]] static int outWarning(char const * format, ...);
    [[gnu::format(printf, 1, 2)]] static int outError(char const * format, ...);
    [[gnu::format(printf, 1, 2)]] static int outDebug(char const * format, ...);
    [[gnu::format(printf, 2, 3)]] static int outDebug(int n, char const * format, ...);
    /// Writes the text to standard output as it stands, whatever the mask.
    static int print(char const * text);

    /// Notes an error; 0 for none.
    static int setError(int code);
    /// Whether a non-zero code is stored, not the code itself.
    [[nodiscard]] static bool getError();
    /// Ends the process with the code as its exit status; exit handlers run, no buffered output is lost.
    [[noreturn]] static void exit(Error code);

    /// Names are cut to 23 characters.
    static int setProgramName(char const * name);
    /// The name, or "Yul" while it is empty.
    [[nodiscard]] static char const * getProgramName();
    static int setDatabasePath(char const * path); ///< the directory of the library's data files
    /// The path, empty while none is set; valid until it is set again.
    [[nodiscard]] static char const * getDatabasePath();
    /// The application's fixed current time, seconds since 1970, UTC; Const::MISS until set.
    static int setInitTime(int time);
    [[nodiscard]] static int getInitTime();

    /// Seconds since 1970 with microseconds.
    [[nodiscard]] static double getTime();
    /// Virtual memory size of the process in octets, cut to the range of int; 0 where /proc has no entry.
    [[nodiscard]] static int getVirtMem();
    /// The host name, at most 39 characters, fetched anew; valid until the next call.
    [[nodiscard]] static char const * getComputerName();
    /// Suspends the process; negative times and NaN return at once.
    static int sleep(float seconds);
    /// Reads one character from standard input.
    static int pause();
    [[nodiscard]] static char const * getVersion(); ///< one fixed text

    /// The process-wide resource store and its operations, see Resrc.
    [[nodiscard]] static Resrc & resrc();
    [[nodiscard]] static char const * getResrc(char const * name);                   ///< see Resrc::get
    [[nodiscard]] static int getResrc(char const * name, int def);                   ///< def while not set
    [[nodiscard]] static float getResrc(char const * name, float def);               ///< def while not set
    [[nodiscard]] static char const * getResrc(char const * name, char const * def); ///< def while not set
    [[nodiscard]] static bool getResrcBool(char const * name);                       ///< see Resrc::getBool
    [[nodiscard]] static int getResrcType(char const * name);                        ///< see Resrc::getType
    static int addResrc(char const * name, char const * value, int type);            ///< see Resrc::add
    static int putResrc(char const * name, char const * value);                      ///< see Resrc::put
    static int setResrc(char const * name, char const * value);                      ///< see Resrc::set
    /// Joins the value behind the present one with a newline.
    static int appendResrc(char const * name, char const * value);
    static int printAllResrc();                    ///< lists all of them on standard output
    static int rewindResrc();                      ///< see Resrc::rewind
    [[nodiscard]] static char const * nextResrc(); ///< see Resrc::getNext
};

} // namespace Yul
