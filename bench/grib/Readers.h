// Ours and the peers, each reading the values of a file or looking through its headers.
#pragma once

#include "grib/Messages.h"
#include "grid/GribFile.h"
#include "grid/Grid.h"

#include <string>

namespace bench::grib {

// What each reads into: memory that is kept from one field to the next.
inline Yul::Grid grid;
inline std::vector<double> doubles;
inline Octets whole;
inline std::vector<float> floats;

inline void readOurs(std::string const & name)
{
    Yul::GribFile file(name.c_str());
    if (file.read(grid) != 1)
        fail("ours reads nothing");
}

struct Stream
{
    explicit Stream(std::string const & name) : file(std::fopen(name.c_str(), "rb")) {}

    ~Stream() { std::fclose(file); }

    Stream(Stream const &) = delete;
    Stream & operator=(Stream const &) = delete;

    std::FILE * file;
};

inline void readEccodes(std::string const & name)
{
    Stream const stream(name);
    int error = 0;
    while (codes_handle * const handle =
               codes_handle_new_from_file(nullptr, stream.file, PRODUCT_GRIB, &error)) {
        Handle const h(handle);
        codes_set_double(handle, "missingValue", MISS);
        std::size_t count = doubles.size();
        if (codes_get_double_array(handle, "values", doubles.data(), &count) != 0)
            fail("ecCodes reads nothing");
    }
}

/// The next message of edition 2, whole; false at the end.
inline bool readMessage(std::FILE * file)
{
    whole.resize(16);
    if (std::fread(whole.data(), 1, 16, file) != 16)
        return false;
    std::size_t length = 0;
    for (int i = 8; i < 16; ++i)
        length = length << 8 | whole[static_cast<std::size_t>(i)];
    whole.resize(length);
    return std::fread(whole.data() + 16, 1, length - 16, file) == length - 16;
}

inline void readG2c(std::string const & name)
{
    Stream const stream(name);
    while (readMessage(stream.file)) {
        gribfield * field = nullptr;
        if (g2_getfld(whole.data(), 1, 1, 1, &field) != 0)
            fail("g2c reads nothing");
        std::copy_n(field->fld, floats.size(), floats.begin());
        g2_free(field);
    }
}

/// Each side looks at parameter, level, date, forecast time and size.
inline long looked_at = 0;

inline int listOurs(std::string const & name)
{
    Yul::GribFile file(name.c_str());
    int count = 0;
    for (; file.next() != 0; ++count) {
        Yul::GribPDB const & header = file.getHeader();
        looked_at += *header.getVar().getName() + header.getLevel().getType() + header.getDate().getHour() +
                     static_cast<long>(header.getForeTime().getHours());
    }
    return count;
}

inline int describeOurs(std::string const & name)
{
    Yul::GribFile file(name.c_str());
    Yul::Grid header;
    int count = 0;
    for (; file.peek(header) != 0; ++count, file.next())
        looked_at += header.getNx();
    return count;
}

inline int listEccodes(std::string const & name)
{
    Stream const stream(name);
    int count = 0;
    int error = 0;
    while (codes_handle * const handle =
               codes_handle_new_from_file(nullptr, stream.file, PRODUCT_GRIB, &error)) {
        Handle const h(handle);
        char text[64];
        long number = 0;
        for (char const * key : {"shortName", "typeOfLevel", "stepRange"}) {
            std::size_t length = sizeof text;
            codes_get_string(handle, key, text, &length);
        }
        for (char const * key : {"level", "dataDate", "dataTime", "Ni", "Nj"}) {
            codes_get_long(handle, key, &number);
            looked_at += number;
        }
        ++count;
    }
    return count;
}

inline int listG2c(std::string const & name)
{
    Stream const stream(name);
    int count = 0;
    for (; readMessage(stream.file); ++count) {
        gribfield * field = nullptr;
        if (g2_getfld(whole.data(), 1, 0, 0, &field) != 0)
            fail("g2c lists nothing");
        looked_at += field->ipdtmpl[1] + field->idsect[5] + field->igdtmpl[7];
        g2_free(field);
    }
    return count;
}

} // namespace bench::grib
