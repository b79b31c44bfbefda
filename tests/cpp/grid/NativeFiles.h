// Native grid files of tests: a grid, and the parts of the file that it makes.
#pragma once

#include "core/Yul.h"
#include "cpp/Folder.h"
#include "geo/Domain.h"
#include "grid/Grid.h"
#include "grid/GridYulFile.h"
#include "time/Date.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Yul::test {

/// Files in a folder of the test's own, and silence while it runs.
class NativeFiles : public testing::Test
{
protected:
    NativeFiles() { Yul::setMessageLevel(Yul::ERROR); }

    ~NativeFiles() override { Yul::setMessageLevel(Yul::OUT2); }

    std::string write(std::string const & octets, char const * name = "file") const
    {
        return folder.write(name, octets);
    }

    std::string path(char const * name = "file") const { return folder.of(name); }

    std::string written(Grid const & grid, int version, int format) const
    {
        GridYulFile file;
        file.setVer(version);
        EXPECT_EQ(file.write(path().c_str(), format, grid), 1);
        EXPECT_EQ(file.close(), 1);
        return octetsOf(path());
    }

private:
    Folder folder;
};

/// A wind at 500 mb whose values count from 0.5 on.
inline Grid gridOn(char const * domain, int nx = 3, int ny = 2)
{
    Grid grid(nx, ny);
    for (int i = 0; i < nx * ny; ++i)
        grid.setValue(i % nx, i / nx, static_cast<float>(i) + 0.5F);
    grid.setDomain(Domain(domain));
    grid.setDatim("12Z 14 NOV 2026");
    grid.setDate(Date(2026, 11, 14, 12, 0, 0));
    grid.setInfo("Wind [m s-1]");
    grid.setVar("UGRD");
    grid.setLevel("500mb");
    grid.setForeTime("24h");
    grid.setType(5);
    grid.setSource(7);
    grid.setModel(96);
    grid.setVersion(2);
    return grid;
}

/// Values as they stand in files.
inline std::string bigEndian(std::vector<float> const & values)
{
    std::string octets;
    for (float const value : values) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        for (int shift = 24; shift >= 0; shift -= 8)
            octets += static_cast<char>(bits >> shift & 0xFFU);
    }
    return octets;
}

constexpr char const * LATLON = "ll:10:20,45,10,3,2,5,2.5";
inline std::string const TEXT_VALUES =
    "5.00000000e-01\n1.50000000e+00\n2.50000000e+00\n3.50000000e+00\n4.50000000e+00\n5.50000000e+00\n";
inline std::string const BINARY_VALUES = bigEndian({0.5F, 1.5F, 2.5F, 3.5F, 4.5F, 5.5F}) + '\n';
inline std::string const DATE_LINE = "12Z 14 NOV 2026\n";
inline std::string const IDENTIFICATION = "7 2 96 5 100 500 24 1002002:m_s-1\n";

} // namespace Yul::test
