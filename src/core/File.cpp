#include "core/File.h"

#include "core/StrLib.h"
#include "core/WriteAll.h"

#include <cerrno>
#include <csignal>
#include <new>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace Yul {
namespace {

constexpr std::size_t MAX_LINE = std::size_t{1} << 20;
constexpr std::size_t LARGE = std::size_t{1} << 16; // octets that are handed on in one piece

/// Keeps a closed pipe from ending the process while it lives.
class IgnoreBrokenPipe
{
public:
    IgnoreBrokenPipe()
    {
        struct sigaction ignore
        {
        };

        ignore.sa_handler = SIG_IGN;
        sigaction(SIGPIPE, &ignore, &before);
    }

    ~IgnoreBrokenPipe() { sigaction(SIGPIPE, &before, nullptr); }

    IgnoreBrokenPipe(IgnoreBrokenPipe const &) = delete;
    IgnoreBrokenPipe & operator=(IgnoreBrokenPipe const &) = delete;

private:
    struct sigaction before
    {
    };
};

/// Whether a read ended because of a signal alone, so that it may go on.
bool isInterrupted(std::FILE * file)
{
    if (std::ferror(file) == 0 || errno != EINTR)
        return false;
    std::clearerr(file);
    return true;
}

int nextOctet(std::FILE * file)
{
    int c = std::getc(file);
    while (c == EOF && isInterrupted(file))
        c = std::getc(file);
    return c;
}

/// A descriptor of the file, at its end to append; -1 where it cannot be opened.
int openPath(char const * name, char mode)
{
    constexpr mode_t ANYBODY = 0666; // as far as the user's mask allows
    if (mode == 'r')
        return ::open(name, O_RDONLY | O_CLOEXEC);
    bool const appends = mode == 'a';
    int const descriptor =
        ::open(name, O_WRONLY | O_CREAT | O_CLOEXEC | (appends ? O_APPEND : O_TRUNC), ANYBODY);
    if (appends && descriptor >= 0)
        lseek(descriptor, 0, SEEK_END);
    return descriptor;
}

bool isDirectory(int descriptor)
{
    struct stat info
    {
    };

    return fstat(descriptor, &info) == 0 && S_ISDIR(info.st_mode);
}

} // namespace

File::File(File && other) noexcept
{
    *this = std::move(other);
}

File & File::operator=(File && other) noexcept
{
    if (this != &other) {
        close();
        descriptor = std::exchange(other.descriptor, -1);
        stream = std::exchange(other.stream, nullptr);
        pending = std::move(other.pending);
        is_reading = other.is_reading;
        is_pipe = other.is_pipe;
        is_standard = other.is_standard;
        has_room = other.has_room;
        has_failed = other.has_failed;
        file_name = std::move(other.file_name);
    }
    return *this;
}

bool File::isRegular(char const * name)
{
    struct stat info
    {
    };

    return StrLib::valid(name) && !StrLib::equal(name, "-") && stat(name, &info) == 0 &&
           S_ISREG(info.st_mode);
}

int File::open(char const * name, char const * mode)
{
    close();
    if (!StrLib::valid(name) || !StrLib::valid(mode))
        return 0;
    is_reading = *mode == 'r';
    is_pipe = *name == '|';
    is_standard = is_reading && StrLib::equal(name, "-");
    has_room = false;
    has_failed = false;
    file_name = name;
    if (is_standard)
        take(stdin);
    else if (is_pipe)
        take(is_reading ? nullptr : popen(name + 1, "w"));
    else
        descriptor = openPath(name, *mode);
    if (isOpen() && !is_pipe && isDirectory(descriptor))
        close();
    return isOpen() ? 1 : 0;
}

void File::take(std::FILE * opened)
{
    descriptor = opened != nullptr ? fileno(opened) : -1;
    stream = descriptor >= 0 ? opened : nullptr;
}

/// The C library's stream of a file that is read, which is made when it is asked for first: readers that say where they read do
/// without. Null when there is none to be had.
std::FILE * File::buffered()
{
    if (is_reading && isOpen() && stream == nullptr)
        stream = fdopen(descriptor, "r");
    return is_reading ? stream : nullptr;
}

int File::close()
{
    if (!isOpen())
        return 1;
    flush();
    if (has_room && has_failed)
        giveRoomBack();
    std::FILE * const closing = std::exchange(stream, nullptr);
    int const closing_descriptor = std::exchange(descriptor, -1);
    pending = {};
    if (is_standard)
        return 1;
    int const fault = closing == nullptr ? ::close(closing_descriptor)
                      : is_pipe          ? pclose(closing)
                                         : std::fclose(closing);
    return fault == 0 && !has_failed ? 1 : 0;
}

int File::write(std::string_view octets)
{
    if (!isOpen())
        return 0;
    if (pending.size() + octets.size() >= LARGE)
        flush();
    if (octets.size() >= LARGE)
        writeThrough(octets);
    else
        try {
            pending += octets;
        } catch (std::bad_alloc const &) {
            has_failed = true;
        }
    return has_failed ? 0 : 1;
}

/// Hands octets to the operating system in as few pieces as it takes.
void File::writeThrough(std::string_view octets)
{
    if (octets.empty())
        return;
    IgnoreBrokenPipe const ignore;
    has_failed = has_failed || !detail::writeAll(descriptor, octets);
}

int File::reserve([[maybe_unused]] std::size_t octets)
{
    if (!isOpen())
        return 0;
#ifdef FALLOC_FL_KEEP_SIZE
    auto const position = static_cast<off_t>(tell());
    bool const is_appended_to = (fcntl(descriptor, F_GETFL) & O_APPEND) != 0; // by others as well, perhaps
    if (has_failed || octets < LARGE || position < 0 || is_appended_to)
        return has_failed ? 0 : 1;
    has_room = fallocate(descriptor, FALLOC_FL_KEEP_SIZE, position, static_cast<off_t>(octets)) == 0;
    if (!has_room && (errno == ENOSPC || errno == EDQUOT || errno == EFBIG)) {
        has_failed = true;
        giveRoomBack(); // a part of it may have been taken
    }
#endif
    return has_failed ? 0 : 1;
}

/// Room behind the end of a file that nobody else appends to; what is not given back is free when the file is deleted.
void File::giveRoomBack()
{
    if (auto const octets = size(); octets >= 0)
        (void)!ftruncate(descriptor, static_cast<off_t>(octets));
}

int File::flush()
{
    if (!isOpen())
        return 0;
    writeThrough(pending);
    pending.clear();
    return has_failed ? 0 : 1;
}

int File::openRegular(char const * name)
{
    close();
    return isRegular(name) ? open(name, "r") : 0;
}

std::size_t File::read(void * buffer, std::size_t size)
{
    std::FILE * const file = buffered();
    if (file == nullptr)
        return 0;
    std::clearerr(file); // a file may have grown since its end was met
    std::size_t done = 0;
    do
        done += std::fread(static_cast<char *>(buffer) + done, 1, size - done, file);
    while (done < size && isInterrupted(file));
    return done;
}

std::size_t File::readAt(long long position, void * buffer, std::size_t size)
{
    if (!isOpen() || position < 0)
        return 0;
    std::size_t done = 0;
    while (done < size) {
        auto const at = static_cast<off_t>(position + static_cast<long long>(done));
        ssize_t const got = pread(descriptor, static_cast<char *>(buffer) + done, size - done, at);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

bool File::isAtHand([[maybe_unused]] long long position) const
{
#ifdef RWF_NOWAIT
    char octet = 0;
    iovec const one{&octet, 1};
    return isOpen() && position >= 0 &&
           preadv2(descriptor, &one, 1, static_cast<off_t>(position), RWF_NOWAIT) == 1;
#else
    return false;
#endif
}

std::size_t File::readSome(void * buffer, std::size_t size)
{
    if (!isOpen())
        return 0;
    ssize_t got = 0;
    do
        got = ::read(descriptor, buffer, size);
    while (got < 0 && errno == EINTR);
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

bool File::readLine(std::string & line)
{
    line.clear();
    std::FILE * const file = buffered();
    if (file == nullptr)
        return false;
    int c = nextOctet(file);
    if (c == EOF)
        return false;
    for (; c != EOF && c != '\n'; c = nextOctet(file))
        if (line.size() < MAX_LINE)
            line += static_cast<char>(c);
    return true;
}

int File::seek(long long position)
{
    if (flush() == 0 || position < 0)
        return 0;
    bool const is_there = stream != nullptr ? fseeko(stream, position, SEEK_SET) == 0
                                            : lseek(descriptor, position, SEEK_SET) >= 0;
    return is_there ? 1 : 0;
}

long long File::tell() const
{
    if (is_reading && stream != nullptr)
        return static_cast<long long>(ftello(stream));
    auto const position = static_cast<long long>(isOpen() ? lseek(descriptor, 0, SEEK_CUR) : -1);
    return position < 0 ? -1 : position + static_cast<long long>(pending.size());
}

long long File::size() const
{
    struct stat info
    {
    };

    if (!isOpen() || fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode))
        return -1;
    return static_cast<long long>(info.st_size);
}

} // namespace Yul
