#include "core/StrLib.h"

#include <string>

#include <gtest/gtest.h>

namespace Yul {
namespace {

struct PatternCase
{
    char const * text;
    char const * pattern;
    bool fits;
};

constexpr PatternCase PATTERN_CASES[] = {
    {"SA12", "uudd", true},
    {"SA1", "uudd", false},
    {"SA123", "uudd", false},
    {"sA12", "uudd", false},
    {"KDEN-", "u...-", true},
    {"KDEN", "u...-", false},
    {"X", "[XYZ]", true},
    {"W", "[XYZ]", false},
    {"XZ9", "[XY][YZ]d", true},
    {"X", "[]", false},
    {"[1", "[d", true},
    {"]", "[]]", false},
    {"", "", true},
    {"", "u", false},
    {"A", "", false},
    {"\xC4", "u", false},
    {nullptr, "", false},
    {"", nullptr, false},
    {nullptr, nullptr, false},
};

TEST(StrLib, TextsFitPatternsAsAWhole)
{
    for (auto const & [text, pattern, fits] : PATTERN_CASES)
        EXPECT_EQ(StrLib::match(text, pattern), fits)
            << (text != nullptr ? text : "null") << " " << (pattern != nullptr ? pattern : "null");
}

TEST(StrLib, ComparesTheFirstCharactersWhateverTheCase)
{
    EXPECT_TRUE(StrLib::iequal("Metar", "METAR"));
    EXPECT_FALSE(StrLib::iequal("METAR", "METARS"));
    EXPECT_FALSE(StrLib::iequal("\xE4", "\xC4")); // letters are those of ASCII
    EXPECT_TRUE(StrLib::iequal("metar", "METARS", 5));
    EXPECT_FALSE(StrLib::iequal("metar", "METARS", 6));
    EXPECT_TRUE(StrLib::iequal("a", "b", 0));
    EXPECT_TRUE(StrLib::iequal("a", "b", -1));
    EXPECT_TRUE(StrLib::iequal(nullptr, nullptr, 3) && StrLib::iequal(nullptr, nullptr));
    EXPECT_FALSE(StrLib::iequal(nullptr, "", 0) || StrLib::iequal("", nullptr));
}

TEST(StrLib, CopiesAndEmpties)
{
    char const text[] = "48 N";
    auto const copy = StrLib::acopy(text);
    EXPECT_NE(copy.get(), text);
    EXPECT_STREQ(copy.get(), text);
    EXPECT_EQ(StrLib::clear(copy.get()), 1);
    EXPECT_STREQ(copy.get(), "");
    EXPECT_EQ(StrLib::acopy(nullptr), nullptr);
    EXPECT_EQ(StrLib::clear(nullptr), 0);
}

} // namespace
} // namespace Yul
