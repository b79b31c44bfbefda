#include "core/File.h"

#include "core/StrLib.h"
#include "core/WriteAll.h"

#include <cerrno>
#include <csignal>
#include <new>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
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

bool isDirectory(std::FILE * file)
{
    struct stat info
    {
    };

    return fstat(fileno(file), &info) == 0 && S_ISDIR(info.st_mode);
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
        file = std::exchange(other.file, nullptr);
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
        file = stdin;
    else if (is_pipe)
        file = is_reading ? nullptr : popen(name + 1, "w");
    else
        file = std::fopen(name, is_reading ? "rbe" : *mode == 'a' ? "abe" : "wbe");
    if (file != nullptr && !is_pipe && isDirectory(file)) {
        close();
        return 0;
    }
    return file != nullptr ? 1 : 0;
}

int File::close()
{
    if (file == nullptr)
        return 1;
    flush();
    if (has_room && has_failed)
        giveRoomBack();
    std::FILE * const closing = std::exchange(file, nullptr);
    pending = {};
    if (is_standard)
        return 1;
    bool const is_closed = (is_pipe ? pclose(closing) : std::fclose(closing)) == 0;
    return is_closed && !has_failed ? 1 : 0;
}

int File::write(std::string_view octets)
{
    if (file == nullptr)
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
    has_failed = has_failed || !detail::writeAll(fileno(file), octets);
}

int File::reserve([[maybe_unused]] std::size_t octets)
{
    if (file == nullptr)
        return 0;
#ifdef FALLOC_FL_KEEP_SIZE
    int const descriptor = fileno(file);
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
        (void)!ftruncate(fileno(file), static_cast<off_t>(octets));
}

int File::flush()
{
    if (file == nullptr)
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
    if (file == nullptr || position < 0)
        return 0;
    std::size_t done = 0;
    while (done < size) {
        auto const at = static_cast<off_t>(position + static_cast<long long>(done));
        ssize_t const got = pread(fileno(file), static_cast<char *>(buffer) + done, size - done, at);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

std::size_t File::readSome(void * buffer, std::size_t size)
{
    if (file == nullptr)
        return 0;
    ssize_t got = 0;
    do
        got = ::read(fileno(file), buffer, size);
    while (got < 0 && errno == EINTR);
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

bool File::readLine(std::string & line)
{
    line.clear();
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
    return flush() != 0 && position >= 0 && fseeko(file, position, SEEK_SET) == 0 ? 1 : 0;
}

long long File::tell() const
{
    if (file == nullptr)
        return -1;
    if (is_reading)
        return static_cast<long long>(ftello(file));
    auto const position = static_cast<long long>(lseek(fileno(file), 0, SEEK_CUR));
    return position < 0 ? -1 : position + static_cast<long long>(pending.size());
}

long long File::size() const
{
    struct stat info
    {
    };

    if (file == nullptr || fstat(fileno(file), &info) != 0 || !S_ISREG(info.st_mode))
        return -1;
    return static_cast<long long>(info.st_size);
}

} // namespace Yul
