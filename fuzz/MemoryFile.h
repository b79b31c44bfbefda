// Octets as a file that has a name, without touching a disk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

/// A file in memory that readers open by name; gone with the object. Descriptors serve again: to make one costs more than
/// to read most inputs.
class MemoryFile
{
public:
    MemoryFile(std::uint8_t const * data, std::size_t size) : descriptor(takeDescriptor())
    {
        for (off_t at = 0; size > 0;) {
            auto const written = pwrite(descriptor, data + at, size, at);
            if (written <= 0)
                break;
            at += written;
            size -= static_cast<std::size_t>(written);
        }
    }

    MemoryFile(MemoryFile const &) = delete;
    MemoryFile & operator=(MemoryFile const &) = delete;

    ~MemoryFile()
    {
        if (ftruncate(descriptor, 0) == 0)
            spare().push_back(descriptor);
        else
            close(descriptor);
    }

    [[nodiscard]] std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor); }

private:
    static std::vector<int> & spare()
    {
        static std::vector<int> descriptors;
        return descriptors;
    }

    static int takeDescriptor()
    {
        if (spare().empty())
            return memfd_create("input", 0);
        int const taken = spare().back();
        spare().pop_back();
        return taken;
    }

    int descriptor;
};
