// Octets as a file that has a name, without touching a disk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

/// A file in memory that readers open by name; gone with the object.
class MemoryFile
{
public:
    MemoryFile(std::uint8_t const * data, std::size_t size) : descriptor(memfd_create("input", 0))
    {
        while (size > 0) {
            auto const written = write(descriptor, data, size);
            if (written <= 0)
                break;
            data += written;
            size -= static_cast<std::size_t>(written);
        }
    }

    MemoryFile(MemoryFile const &) = delete;
    MemoryFile & operator=(MemoryFile const &) = delete;

    ~MemoryFile() { close(descriptor); }

    [[nodiscard]] std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor); }

private:
    int descriptor;
};
