#include "naming/NameConv.h"

#include "core/Resrc.h"
#include "core/Yul.h"
#include "cpp/Folder.h"
#include "naming/NameConvFile.h"

#include <filesystem>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace Yul {
namespace {

namespace fs = std::filesystem;

constexpr int NOW = 1794676980; // 2026-11-14 17:23:00 UTC

/// A directory of data files, a convention file and a fixed present.
class Naming : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::create_directory(folder.of("one"));
        fs::create_directory(folder.of("two"));
        Yul::resrc().clear();
        Yul::setResrc("file_path", folder.path.c_str());
        Yul::setResrc("data_path", folder.of("one").c_str());
        Yul::setResrc("both", (folder.of("one") + "," + folder.of("two")).c_str());
        Yul::setInitTime(NOW);
        folder.write("name.cnv", "# comment\nshort - - -\n"
                                 "sfc     %D/%Y%m%d%h.sfc %D/%Y%m%d%h.hdr 100,dat min=600\n"
                                 "sfc_old %D/old - - -\n"
                                 "GRID    %{both}/%Y%m%d%6h.grb - ext,5 size=3\n");
    }

    void TearDown() override
    {
        Yul::resrc().clear();
        Yul::setInitTime(Const::MISS);
    }

    /// The name made for the present, without the folder.
    std::string
    encode(NameConv & convention, Date const & date = Date(static_cast<long>(NOW)), int which = 0) const
    {
        String name;
        convention.encode(date, which, name);
        std::string text = name.get();
        return text.starts_with(folder.of("")) ? text.substr(folder.path.string().size()) : text;
    }

    std::string find(NameConv & convention, char const * when) const
    {
        NameConvFile file;
        if (convention.setLatest(when, file) == 0)
            return "none";
        return fs::path(file.getFilename()).lexically_relative(folder.path).string();
    }

    test::Folder folder;
};

struct TemplateCase
{
    char const * text;
    char const * name;
    int step;
};

TEST_F(Naming, TemplateCodes)
{
    constexpr TemplateCase CASES[] = {
        {"%Y%m%d%3h.grb", "2026111415.grb", 10800},
        {"%y %6h{x}%%%n", "26_12x%23", 60},
        {"%10n%b%B%j", "20novNOV318", 600},
        {"%5Y%2m%4d", "20251012", 345600},
        {"%e-%f-%3f-%a-%2a-%0a-%z", "ext-12-012-a-ab-abc-0", Const::MISS},
        {"a%", "a", Const::MISS},
        {"a%6", "a", Const::MISS},
        {"a%{", "a", Const::MISS},
        {"%0h%0n", "1723", 60},
        {"%99999999999h", "00", 35996400},
        {"%{unset}/x%j", "./x318", 86400},
    };
    for (auto const & c : CASES) {
        NameConv convention((std::string("@") + c.text).c_str());
        convention.setExt("ext");
        convention.setKey('f', "12");
        convention.setKey('a', "abc");
        EXPECT_EQ(encode(convention), c.name) << c.text;
        EXPECT_EQ(convention.setOffset(c.text), c.step) << c.text;
    }
    NameConv missing("@%Y%y%m%B%b%d%h%n");
    EXPECT_EQ(encode(missing, Date()), "00000000XXXxxx000000");
}

TEST_F(Naming, OwnDirectoryReplacesEveryDirectory)
{
    NameConv convention("@%D/%{both}/x");
    convention.setPath("/own");
    EXPECT_EQ(encode(convention), "/own//own/x");
}

TEST_F(Naming, ConventionFileGivesTheTemplates)
{
    NameConv exact("SFC");
    EXPECT_EQ(encode(exact), "/one/2026111417.sfc");
    EXPECT_EQ(encode(exact, Date(static_cast<long>(NOW)), 1), "/one/2026111417.hdr");
    EXPECT_STREQ(exact.getExt(), "");

    NameConv partial("sfc_old");
    EXPECT_EQ(encode(partial), "/one/2026111417.sfc") << "an earlier line for a shorter type wins";
    EXPECT_STREQ(partial.getExt(), "old");

    NameConv unknown("other_%h:k=v,head%k");
    EXPECT_EQ(encode(unknown), "other_17");
    EXPECT_EQ(encode(unknown, Date(static_cast<long>(NOW)), 1), "headv");
    EXPECT_STREQ(unknown.getKey('k'), "v");
    EXPECT_STREQ(unknown.getKey('q'), "");

    String name("before");
    NameConv grid("grid");
    EXPECT_EQ(grid.encodeHdr(Date(static_cast<long>(NOW)), name), 0);
    EXPECT_STREQ(name.get(), "");
    EXPECT_EQ(grid.set(""), 0);
    EXPECT_EQ(grid.set("none"), 1);
    EXPECT_EQ(grid.encodeFile(Date(), name), 0);
}

TEST_F(Naming, MissingConventionFileLeavesTheTypeAsTemplate)
{
    fs::rename(folder.of("name.cnv"), folder.of("name_conv"));
    Yul::setResrc("name_conv", "other.cnv");
    NameConv fallback("sfc");
    EXPECT_EQ(encode(fallback), "/one/2026111417.sfc");

    fs::remove(folder.of("name_conv"));
    NameConv convention;
    testing::internal::CaptureStderr();
    EXPECT_EQ(convention.set("sfc"), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "NameConv: No file name convention file: " + folder.of("name_conv") + "\n");
    EXPECT_EQ(encode(convention), "sfc");
}

TEST_F(Naming, KeyTableIsBounded)
{
    NameConv convention;
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(convention.setKey(static_cast<char>('A' + i), "0123456789012345678901234"), 1);
    EXPECT_EQ(convention.setKey('z', "x"), 0);
    EXPECT_EQ(convention.setKey('A', "new"), 1);
    EXPECT_STREQ(convention.getKey('B'), "0123456789012345678");
}

struct SearchCase
{
    char const * spec;
    char const * when;
    char const * found;
};

TEST_F(Naming, SearchWalksThroughTime)
{
    folder.write("one/2026111410.sfc", std::string(100, 'x'));
    folder.write("one/2026111412.sfc", "too small");
    folder.write("one/2026111420.sfc", std::string(200, 'x'));
    folder.write("two/2026111406.grb", "abcd");
    folder.write("one/2026111312.grb", "ab");
    folder.write("one/20261114.day", "");
    constexpr SearchCase CASES[] = {
        {"sfc", nullptr, "one/2026111410.sfc"},
        {"sfc", "la#7", "none"},
        {"sfc", "la#8", "one/2026111410.sfc"},
        {"sfc", "+la", "one/2026111420.sfc"},
        {"sfc", "+3:00", "one/2026111420.sfc"},
        {"sfc", "-7", "one/2026111410.sfc"},
        {"sfc", "7:30", "none"},
        {"sfc", "-8la", "none"},
        {"sfc", "-1d+la", "one/2026111410.sfc"},
        {"sfc", "#202611142030", "one/2026111420.sfc"},
        {"sfc", "#2026111500-4:00", "one/2026111420.sfc"},
        {"sfc", "#2026111423la", "one/2026111420.sfc"},
        {"grid", "la", "two/2026111406.grb"}, // only after the first directory was searched through
        {"sfc", "zz", "none"},
        {"sfc", "-999999999d", "none"},
        {"@%D/%Y%m%d.day", "la", "one/20261114.day"}, // an empty file counts without a minimum size
        {"@%D/nowhere/%D/%Y%m%d.day", ">la", "none"},
    };
    for (auto const & c : CASES) {
        NameConv convention(c.spec);
        EXPECT_EQ(find(convention, c.when), c.found) << c.spec << " " << (c.when != nullptr ? c.when : "");
    }
    NameConv convention("sfc");
    EXPECT_EQ(find(convention, ">la"), "one/2026111417.sfc") << "a file to be written need not be there";
    NameConvFile named;
    EXPECT_EQ(convention.setLatest("@some/file", named), 1);
    EXPECT_STREQ(named.getFilename(), "some/file");
}

struct FixedCase
{
    char const * fixed;
    char const * name;
};

TEST_F(Naming, FixedFieldsMoveTheStart)
{
    constexpr FixedCase CASES[] = {
        {"", "202611141723"},
        {"12:30", "202611141130"}, // the minute moves the hour back that was just
                                   // set
        {"12", "202611141223"},
        {"18", "202611131823"},
        {"-6", "202611141223"},
        {":15", "202611141715"},
        {":30", "202611141630"},
        {"-:10", "202611141720"},
        {"1200", "202611120023"},
        {"112012", "202610201223"}, // a later day goes
                                    // back a month
        {"1d6:00", "202611010600"},
        {"#2020111406", "202611140623"},
        {"512", "202611051223"},
        {"122012", "202511201223"}, // a later month goes back a year, then a later day a month
    };
    for (auto const & c : CASES) {
        NameConv convention("@%Y%m%d%h%n");
        convention.setFixDate(c.fixed);
        convention.setOutput(true);
        NameConvFile file;
        EXPECT_EQ(convention.setLatest("0", file), 1);
        EXPECT_STREQ(file.getFilename(), c.name) << c.fixed;
    }
}

TEST_F(Naming, PresentComesFromTheFirstSourceThatIsSet)
{
    NameConv convention("@%Y%m%d%h%n");
    convention.setOutput(true);
    convention.setLateDate(Date(2020, 1, 2, 3, 4, 0));
    setenv("yulcurtime", "#2010", 1);
    NameConvFile file;
    convention.setLatest("0", file);
    EXPECT_STREQ(file.getFilename(), "202611141723");
    Yul::setInitTime(Const::MISS);
    convention.setLatest("0", file);
    EXPECT_STREQ(file.getFilename(), "202001020304");
    for (auto const & [date, fixed] : {std::pair("2020010203", "03:00"), std::pair("20200102", "00:00")}) {
        convention.setLateDate(Date(date)); // without a minute or an hour, which count as 0
        convention.setFixDate(fixed);
        convention.setLatest("0", file);
        EXPECT_STREQ(file.getFilename(), (std::string("20200102") + fixed[0] + fixed[1] + "00").c_str());
    }
    convention.setFixDate("");
    convention.setLateDate(Date());
    convention.setLatest("0", file);
    EXPECT_STREQ(file.getFilename(), "201001010000");
    unsetenv("yulcurtime");
}

} // namespace
} // namespace Yul
