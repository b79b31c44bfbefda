#include "surface/WmoParse.h"

#include "core/Const.h"
#include "core/Resrc.h"
#include "core/String.h"
#include "core/Yul.h"
#include "cpp/Folder.h"
#include "surface/WmoProduct.h"

#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace Yul {
namespace {

struct PatternCase
{
    char const * heading;
    char const * identifier;
    char const * pattern;
    int matches;
};

TEST(HeadingPattern, ReadsFromLeftToRightAndNeverGoesBack)
{
    constexpr PatternCase CASES[] = {
        {"SAUS70 KWBC 060000", "", "", 1},
        {"SAUS70 KWBC 060000", "", "SA", 1},
        {"SAUS70 KWBC 060000", "", "SA..70_KWBC", 1},
        {"SAUS70 KWBC 060000", "", "SAUS70_KWBX", 0},
        {"SA", "", "SAUS", 0},
        {"SAUS70 KWBC", "", "S[AP]US", 1},
        {"SAUS70 KWBC", "", "S[^AP]US", 0},
        {"SXUS70 KWBC", "", "S[AP]", 1},          // a set at the end that does not fit
        {"SAUS70 KWBC", "", "S(PUS|AU|AUS)7", 0}, // "AU" fits first, then "7" does not
        {"SAUS70 KWBC", "", "S(PUS|AUS|AU)7", 1},
        {"SAUS70 KWBC", "", "S(P.S|[AX]?S)70", 1},
        {"SAUS70 KWBC", "", "S(X|Y)", 0},
        {"S", "", "S(X|Y)", 1},
        {"SAUS70 KWBC", "", "SA-_KWBC", 1},
        {"SAUS70 KWBC", "", "-K", 1},
        {"SAUS70 KKWBC", "", "-KWBC", 0}, // stops at the first K
        {"SAUS70 KWBC", "", "*", 1},
        {"SAUS70 KWBC", "", "-X", 0},
        {"** SAUS70 KWBC", "", "SAUS", 1},
        {"NWUS54 KJAN", "  LSRJAN", "NWUS/LSR", 1},
        {"NWUS54 KJAN", "LSRJAN", "/AFD", 0},
        {"YHXX", "GRIB1 M81 G3 L500 H24", "/M81H24", 1},
        {"YHXX", "GRIB1 M81 G3 L500 H24", "/M81 H36", 0},
        {"YHXX", "GRIB1 M81 G3", "/L500", 0},
        {"SA", "", "S[A", 1},
        {"SA", "", "S(A", 1},
    };
    for (auto const & c : CASES)
        EXPECT_EQ(WmoParse().compare(c.heading, c.identifier, c.pattern), c.matches)
            << c.heading << " " << c.pattern;
}

struct ZoneCase
{
    char const * line;
    char const * zone;
    int matches;
};

TEST(ZoneLine, GroupsAndRanges)
{
    constexpr ZoneCase CASES[] = {
        {"WIZ063>065-070-", "WIZ064", 1},
        {"WIZ063>065-070-", "WIZ066", 0},
        {"WIZ063>065-070-", "wiz063", 1},
        {"WIZ063>065-070-", "WIZALL", 1},
        {"WIZ063>065-070-", "WIC064", 0},
        {"WIZ063-070-102015-\r\r\n", "WIZ102", 0}, // the time is no zone
        {"WIZ063-070-ILZ001-002-102015-", "ILZ002", 1},
        {"WIZ063-070-ILZ001-002-102015-", "ILZ063", 0},
        {"WIZWIZ063", "WIZ063", 0},
        {"WIZ", "WIZ063", 0},
        {"", "WIZ063", 0},
        {"WIZ063>065-070-", "WI", 0},
    };
    for (auto const & c : CASES)
        EXPECT_EQ(WmoParse::checkZone(c.line, c.zone), c.matches) << c.line << " " << c.zone;
}

/// Feeds and indexes in a directory of their own.
class Feed : public testing::Test
{
protected:
    void SetUp() override { Yul::resrc().clear(); }

    static std::string
    bulletin(std::string const & heading, std::string const & identifier, std::string const & lines)
    {
        return "\x01\r\r\n123 \r\r\n" + heading + "\r\r\n" + identifier + "\r\r\n" + lines + "\x03";
    }

    /// Every data line as "heading code line;".
    static std::string readAll(WmoParse & feed)
    {
        std::string all;
        String line;
        for (int code = feed.getLine(line); code != 0; code = feed.getLine(line)) {
            std::string text = line.get();
            text.erase(std::min(text.find('\r'), text.size()));
            all += std::string(feed.getHeader()) + " " + std::to_string(code) + " " + text + ";";
        }
        return all;
    }

    test::Folder folder;
};

TEST_F(Feed, LinesAreClassified)
{
    folder.write(
        "feed",
        "junk\r\r\n" +
            bulletin("A", "ID", "text\r\r\n\r\r\n$$\r\r\nWIZ063-070-\r\r\n/O.NEW.X\r\r\n...HEAD\r\r\n") +
            "\n** B KWBC ****\nid\n  x\n$$$\n..X\nWIX063\nlast");
    WmoParse feed(folder.of("feed").c_str());
    EXPECT_EQ(readAll(feed),
              "A 16 text;A 17 ;A 18 $$;A 19 WIZ063-070-;A 20 /O.NEW.X;A 22 ...HEAD;A 17 \x03\n;"
              "B KWBC 17   x\n;B KWBC 18 $$$\n;B KWBC 17 ..X\n;B KWBC 16 WIX063\n;B KWBC 16 last;");
}

TEST_F(Feed, OptionsAndFilters)
{
    std::string const two =
        bulletin("SAUS70 KWBC 060000", "METAR", "KAAA 1\r\r\nKBBB 2\r\r\n$$\r\r\nKCCC 3\r\r\n") + "\n" +
        bulletin("WWUS53 KMKX 060000", "SVRMKX", "WIZ063-064-\r\r\nKBBB 5\r\r\n");
    folder.write("feed", two);
    WmoParse feed;
    feed.open(folder.of("feed").c_str());
    feed.setId("KBBB");
    feed.setParam("dollar,blank");
    EXPECT_EQ(readAll(feed),
              "SAUS70 KWBC 060000 16 KBBB 2;SAUS70 KWBC 060000 18 $$;WWUS53 KMKX 060000 16 KBBB 5;"
              "WWUS53 KMKX 060000 17 \x03;");
    feed.rewind();
    feed.setId("zn:WIZ064");
    EXPECT_EQ(readAll(feed), "");
    feed.rewind();
    feed.setId("zn:WIZ063");
    EXPECT_EQ(readAll(feed),
              "WWUS53 KMKX 060000 19 WIZ063-064-;WWUS53 KMKX 060000 16 KBBB 5;WWUS53 KMKX 060000 17 \x03;");
    feed.rewind();
    feed.setId("METAR");
    EXPECT_EQ(readAll(feed), "") << "heading and identifier lines are not searched";
}

class IndexedFeed : public Feed
{
protected:
    void SetUp() override
    {
        Feed::SetUp();
        std::string const first = bulletin("SAUS70 KWBC 060000", "ONE", "1\r\r\n") + "\n";
        std::string const second = bulletin("FPUS50 KWBC 060000", "TWO", "2\r\r\n") + "\n";
        std::string const third = bulletin("SPUS70 KWBC 060000", "SIX", "3\r\r\n4\r\r\n") + "\n";
        second_offset = static_cast<long>(first.size());
        third_offset = second_offset + static_cast<long>(second.size());
        folder.write("feed", first + second + third);
        folder.write("feed.idx", "0 SAUS70 KWBC 060000 / ONE\nnonsense\n" + std::to_string(second_offset) +
                                     " FPUS50 KWBC 060000 / TWO\n" + std::to_string(third_offset) +
                                     " SPUS70 KWBC 060000 / SIX\n99999 SXUS70 KWBC 060000 / PAST\n");
        feed.open(Filename(folder.of("feed").c_str(), folder.of("feed.idx").c_str()));
        feed.setParam("blank");
        feed.setHeader("S");
    }

    WmoParse feed;
    long second_offset = 0;
    long third_offset = 0;
};

TEST_F(IndexedFeed, PatternSelectsThroughTheIndex)
{
    EXPECT_EQ(readAll(feed), "SAUS70 KWBC 060000 16 1;SAUS70 KWBC 060000 17 \x03\n;SPUS70 KWBC 060000 16 3;"
                             "SPUS70 KWBC 060000 16 4;SPUS70 KWBC 060000 17 \x03\n;");
    feed.setParam("nohdr");
    feed.rewind();
    String line;
    int lines = 0;
    while (feed.getLine(line) != 0)
        ++lines;
    EXPECT_EQ(lines, 7) << "without an index the pattern has no effect";
}

TEST_F(IndexedFeed, PeekListsAndSetLocChooses)
{
    WmoProduct product;
    std::string listed;
    while (feed.peek(product) != 0)
        listed += std::string(product.getHeader()) + "/" + product.getAwip() + "@" +
                  std::to_string(product.getLoc()) + ";";
    EXPECT_EQ(listed, "SAUS70 KWBC 060000/ONE@0;SPUS70 KWBC 060000/SIX@" + std::to_string(third_offset) +
                          ";SXUS70 KWBC 060000/PAST@99999;");
    String line;
    EXPECT_EQ(feed.setLoc(second_offset), 1);
    EXPECT_EQ(feed.getLine(line), WmoParse::DATA);
    EXPECT_STREQ(line.get(), "2\r\r\n") << "chosen although the pattern does not fit";
    EXPECT_STREQ(feed.getAwip(), "TWO");
    EXPECT_TRUE(feed.isNewProd());
    EXPECT_EQ(feed.setLoc(0), 1) << "an offset behind rewinds the index";
    EXPECT_EQ(feed.setLoc(0), 1);
    EXPECT_EQ(feed.getLine(line), WmoParse::DATA);
    EXPECT_STREQ(line.get(), "1\r\r\n");
    EXPECT_EQ(feed.setLoc(100000), 0);
    EXPECT_EQ(feed.setLoc(0, third_offset), 1);
    EXPECT_EQ(feed.getLine(line), WmoParse::DATA);
    EXPECT_STREQ(line.get(), "3\r\r\n");
    EXPECT_EQ(feed.setLoc(1, 0), 0);
}

TEST_F(Feed, SeveralFilesGoOnWhereOneEnds)
{
    folder.write("a", bulletin("A", "ID", "1\r\r\n2"));
    folder.write("b", "");
    folder.write("c", bulletin("C", "ID", "3\r\r\n"));
    Filename names(folder.of("a").c_str());
    names.add(folder.of("b").c_str());
    names.add(folder.of("c").c_str());
    WmoParse feed;
    EXPECT_EQ(feed.open(names), 1);
    EXPECT_EQ(readAll(feed), "A 16 1;A 16 2\x03;C 16 3;C 17 \x03;");
    EXPECT_EQ(feed.getFileInd(), 2);
}

TEST_F(Feed, LongLinesNulOctetsAndGrowingFilesLoseNothing)
{
    std::string const long_line(1 << 20, 'x');
    folder.write("feed", bulletin("A", "ID", long_line + "\r\r\n" + std::string("a\0b", 3) + "\r\r\n"));
    WmoParse feed(folder.of("feed").c_str());
    String line;
    EXPECT_EQ(feed.getLine(line), WmoParse::DATA);
    EXPECT_EQ(line.length(), (1 << 20) + 3);
    EXPECT_EQ(feed.getLine(line), WmoParse::DATA);
    EXPECT_STREQ(line.get(), "a b\r\r\n");
    EXPECT_EQ(feed.getLine(line), WmoParse::NOT_ALNUM);
    EXPECT_EQ(feed.getLine(line), 0);
    std::ofstream(folder.of("feed"), std::ios::app | std::ios::binary)
        << "\n" + bulletin("B", "ID", "late\r\r\n");
    EXPECT_EQ(feed.getLine(line), WmoParse::NOT_ALNUM);
    EXPECT_EQ(feed.getLine(line), WmoParse::DATA);
    EXPECT_STREQ(line.get(), "late\r\r\n");
    char small[4];
    feed.setLoc(0);
    EXPECT_EQ(feed.getLine(small, 4), WmoParse::DATA);
    EXPECT_STREQ(small, "xxx");
}

TEST_F(Feed, BulletinsAcrossBufferEndsAreFound)
{
    std::string octets;
    int const count = 4000;
    for (int i = 0; i < count; ++i)
        octets += bulletin("SA" + std::to_string(i), "ID",
                           "$$\r\r\n" + std::string(static_cast<std::size_t>(i % 211), '*') + "\r\r\n") +
                  "\n";
    folder.write("feed", octets);
    WmoParse feed(folder.of("feed").c_str());
    feed.setParam("dollar");
    String line;
    int seen = 0;
    while (feed.getLine(line) != 0)
        EXPECT_EQ(feed.getHeader(), "SA" + std::to_string(seen++));
    EXPECT_EQ(seen, count);
}

} // namespace
} // namespace Yul
