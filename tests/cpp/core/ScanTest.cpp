#include "core/Scan.h"

#include "core/Format.h"

#include <clocale>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace Yul::detail {
namespace {

struct ScanCase
{
    char const * text;
    char const * format;
    int filled;
    int first;
    float second;
};

/// What sscanf reports for the same text and format; -5 and -5.5 stand for "not filled".
constexpr ScanCase SCAN_CASES[] = {
    {"12Z 45.5", "%2dZ %f", 2, 12, 45.5F},
    {"1245", "%2d%2f", 2, 12, 45.F},
    {"  7x1", "%dx%f", 2, 7, 1.F},
    {"-12", "%2d%f", 2, -1, 2.F},
    {"12 z", "%d%f", 1, 12, -5.5F},
    {"x", "%d%f", 0, -5, -5.5F},
    {"", "%d%f", 0, -5, -5.5F},
    {"9 .5e1", "%d%f", 2, 9, 5.F},
    {"9 -", "%d%f", 1, 9, -5.5F},
    {"5:abc:2", "%d:%*[^:]:%f", 2, 5, 2.F},
    {"99999999999 1", "%d%f", 2, 2147483647, 1.F},
    {"3%4", "%d%%%f", 2, 3, 4.F},
    {"1 inf", "%d%f", 1, 1, -5.5F},
};

TEST(Scan, ReadsWhatTheFormatSays)
{
    for (auto const & c : SCAN_CASES) {
        int first = -5;
        float second = -5.5F;
        EXPECT_EQ(scan(c.text, c.format, &first, &second), c.filled) << c.text;
        EXPECT_EQ(first, c.first) << c.text;
        EXPECT_EQ(second, c.second) << c.text;
    }
}

TEST(Scan, CutsTextsToTheBufferAndTheWidth)
{
    char small[5] = "";
    std::string rest;
    EXPECT_EQ(scan("abcdefgh ]x-z", "%s %[]x-z]", &small, &rest), 2);
    EXPECT_STREQ(small, "abcd");
    EXPECT_EQ(rest, "]x"); // "x-z" is a range, "-" itself is not in it
}

TEST(Format, PrintsLikeTheCLocale)
{
    EXPECT_EQ(format("%3.2f|%-6s|%06d|%5.1e|%%|%c|%.3s", 2.345, "ab", 42, 12345.0, 'x', "abcdef"),
              "2.35|ab    |000042|1.2e+04|%|x|abc");
    EXPECT_EQ(format("%s", std::string(100000, 'x').c_str()).size(), 100000U);
}

std::string formatNothing(char const * text, ...)
{
    VarArgs::Limit const limit(1);
    std::va_list list;
    va_start(list, text);
    VarArgs args(list);
    va_end(list);
    return vformat(text, args);
}

TEST(Format, ReadsNoArgumentsBeyondTheLimit)
{
    EXPECT_EQ(formatNothing("%s %s %d %n %5.1f 100%%", nullptr), "(null) (null) 0    0.0 100%");
    EXPECT_EQ(formatNothing("%999999999d%", nullptr).size(), 4095U);
}

} // namespace
} // namespace Yul::detail
