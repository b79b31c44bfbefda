#include "core/Resrc.h"
#include "core/ResrcCL.h"
#include "core/ResrcEnv.h"
#include "core/ResrcFile.h"
#include "core/Strings.h"
#include "core/Yul.h"
#include "cpp/Folder.h"
#include "program/ResrcDB.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Yul {
namespace {

namespace fs = std::filesystem;

/// A fresh directory that becomes the current one, an environment without settings and an empty store.
class Settings : public testing::Test
{
protected:
    void SetUp() override
    {
        before = fs::current_path();
        fs::current_path(folder.path);
        Yul::resrc().clear();
    }

    void TearDown() override
    {
        fs::current_path(before);
        for (std::string const & name : variables)
            unsetenv(name.c_str());
        Yul::resrc().clear();
        Yul::setMessageLevel(6);
    }

    static void write(std::string const & name, std::string const & text)
    {
        fs::create_directories(fs::path(name).parent_path().empty() ? "." : fs::path(name).parent_path());
        std::ofstream(name, std::ios::binary) << text;
    }

    void setVariable(std::string const & name, std::string const & value)
    {
        setenv(name.c_str(), value.c_str(), 1);
        variables.push_back(name);
    }

    fs::path before;
    test::Folder folder;
    std::vector<std::string> variables;
};

/// Every setting of a file as "name=value" lines.
std::string readAll(std::string const & text)
{
    std::ofstream("settings.txt", std::ios::binary) << text;
    Resrc store;
    ResrcFile file(store);
    file.open("settings.txt");
    String name;
    String value;
    std::string all;
    while (file.get(name, value) > 0)
        all.append(name.get()).append("=").append(value.get()).append("\n");
    return all;
}

struct FileCase
{
    std::string text;
    std::string settings;
};

TEST_F(Settings, FileLinesAndConditions)
{
    std::string const long_name(60, 'n');
    std::string const long_symbol(25, 's');
    FileCase const cases[] = {
        {"# c\n #x y\nMessage: debug more\nalone\n\n", "#x=y\nmessage=debug\n"},
        {"a \"b c\" d\nb \"no end\nc \"\"\n", "a=b c\nb=no end\nc=\n"},
        {long_name + " v", std::string(49, 'n') + "=" + std::string(11, 'n') + "\n"},
        {"x " + std::string(300, 'v'), "x=" + std::string(249, 'v') + "\n"},
        {"def B\nif A\nx 1\nelif B\nx 2\nelse\nx 3\nend\n", "x=2\n"},
        {"DEF A\nDEF B\nIF A\nx 1\nELIF B\nx 2\nELSE\nx 3\nEND\ny 4", "x=1\ny=4\n"},
        {"if V6\nx 1\nend\nif v6\nx 2\nend\nif A\nelif V6\nx 3\nend", "x=1\n"},
        {"if A\ndef C\nif C\nx 1\nend\nend\nif c\nx 2\nend", "x=2\n"},
        {"if A\nelse\nx 1\nelse\nx 2\nend", "x=1\n"},
        {"if\nx 1\nend\nelse\nelif\nx 2", "x=1\nx=2\n"},
        {"def A\nundef a\nif A\nx 1\nend\nx 2", "x=2\n"},
        {"def " + long_symbol + "\nif " + long_symbol + "\nx 1\nend\nif " + long_symbol.substr(0, 19) +
             "\nx 2\nend",
         "x=2\n"},
        {"def 1\ndef 2\ndef 3\ndef 4\ndef 5\ndef 6\ndef 7\ndef 8\ndef 9\ndef 10\ndef 11\nif 11\nx 1\nend\nif "
         "10\nx 2",
         "x=2\n"},
        {std::string("a\0b c\nd e", 9), "a=c\nd=e\n"},
        {"# " + std::string(2 << 20, 'x') + "\na b", "a=b\n"},
    };
    for (auto const & c : cases)
        EXPECT_EQ(readAll(c.text), c.settings) << c.text.substr(0, 80);
}

struct PatternCase
{
    char const * use;
    char const * key;
    char const * pattern;
    int matches;
};

TEST_F(Settings, NamesInFilesArePatternsOverQualifiedNames)
{
    constexpr PatternCase CASES[] = {
        {"", "message", "*.message", 1},
        {"", "message", "plot.message", 1},
        {"", "message", "*message", 1},
        {"", "message", "message", 0},
        {"", "message", "plot.*", 0},
        {"", "message", "*", 0},
        {"", "message", "p*t.mess*ge", 1},
        {"", "aXaXb", "plot.*Xb", 1},
        {"", "abab.c", "plot.*b.c", 1},
        {"", "ab.cb.d", "plot.*b.*b.d", 1},
        {"", "aXbXc", "plot.*X*c", 1},
        {"", "ab.ab.c", "plot.*ab.c", 1},
        {"", "ab.ab.c", "plot.*ab.*c.", 0},
        {"", "xaxab", "plot.*xa", 0}, // the first "xa" is taken, the end is not reached
        {"test", "message", "test.message", 1},
        {"test", "message", "plot.message", 0},
        {"+test", "message", "plot.test.message", 1},
        {"+test", "message", "plot.*.message", 1},
        {"+test", "message", "plot.message", 0},
    };
    Resrc store;
    store.set("prog", "plot");
    for (auto const & c : CASES) {
        store.set("name", c.use);
        ResrcFile const file(store);
        EXPECT_EQ(file.compare(c.key, c.pattern), c.matches) << c.use << " " << c.key << " " << c.pattern;
    }
    store.set("name", "");
    ResrcFile const file(store);
    EXPECT_EQ(file.valid("*.anything"), 1);
    EXPECT_EQ(file.valid("other.anything"), 0);
    EXPECT_EQ(file.valid("anything"), 0);
}

TEST_F(Settings, EnvironmentAsksTheQualifiedNameFirst)
{
    Resrc store;
    store.set("prog", "plot");
    String value;
    EXPECT_EQ(ResrcEnv::get(store, "message", "OTHER", value), 0);
    setVariable("yulmessage", "generic");
    EXPECT_EQ(ResrcEnv::get(store, "message", nullptr, value), 1);
    EXPECT_STREQ(value.get(), "generic");
    setVariable("OTHER", "");
    EXPECT_EQ(ResrcEnv::get(store, "message", "OTHER", value), 1);
    EXPECT_STREQ(value.get(), "") << "a variable that is defined and empty wins";
    setVariable("yul_plot_message", "program");
    store.set("name", "+test");
    ResrcEnv::get(store, "message", nullptr, value);
    EXPECT_STREQ(value.get(), "generic") << "program and use together do not ask for the program alone";
    setVariable("yul_plot_test_message", "both");
    ResrcEnv::get(store, "message", nullptr, value);
    EXPECT_STREQ(value.get(), "both");
}

struct ArgumentCase
{
    char const * arguments; // separated by commas
    char const * read;      // "key=value/kind" of options, "place:value" of the others
};

TEST_F(Settings, ArgumentForms)
{
    constexpr ArgumentCase CASES[] = {
        {"-na,foo", "na=foo/5 "},
        {"-na=foo,--na=a=b", "na=foo/2 na=a=b/2 "},
        {"--na,foo,-na", "na=foo/5 na=/6 "},
        {"-na,-df,x", "na=/6 df=x/5 "},
        {"-5,-,-.5,--5", "0:-5 1:- 2:-.5 3:--5 "},
        {"-x,-5,--,y", "x=-5/5 =/9 0:y "},
        {",-=x", "0: 1:-=x "},
    };
    for (auto const & c : CASES) {
        Strings const args((std::string("program,") + c.arguments).c_str(), ',');
        ResrcCL line(args);
        std::string read;
        String key;
        String value;
        for (int result = line.getKeyed(key, value); result >= 0; result = line.getKeyed(key, value)) {
            int const place = result == 0 ? line.getPosition(value) : 0;
            read += result == 0 ? std::to_string(place) + ":" + value.get() + " "
                                : std::string(key.get()) + "=" + value.get() + "/" +
                                      std::to_string(line.getKind()) + " ";
        }
        EXPECT_EQ(read, c.read);
    }
}

class Start : public Settings
{
protected:
    Start()
    {
        keyed.add("message", nullptr, "me", "-me level");
        keyed.add("metar", "METARS", "mt", "-mt x");
        positional.add("first", nullptr, "", "first file");
        positional.add("rest", nullptr, "", "100% of the rest");
    }

    void create(std::vector<std::string> const & arguments)
    {
        Strings args;
        args.add("/usr/bin/plot");
        for (auto const & argument : arguments)
            args.add(argument.c_str());
        EXPECT_EQ(ResrcDB::create(args, keyed, positional), 1);
    }

    static std::string get(char const * name)
    {
        char const * const value = Yul::getResrc(name);
        return value != nullptr ? value + std::string("/") + std::to_string(Yul::getResrcType(name))
                                : "unset";
    }

    ResrcDBList keyed;
    ResrcDBList positional;
};

TEST_F(Start, LaterSourcesOverrideEarlierOnes)
{
    write("a/yul.cfg", "*.metar a\n*.extra one\nother.thing no\n*.first file\n");
    write("b/Yul.res", "*.metar b\nif T\n*.tagged yes\nend\n");
    create({"-df", "missing:a:+T:b"});
    EXPECT_EQ(get("prog"), "plot/1");
    EXPECT_EQ(get("name"), "plot/1");
    EXPECT_EQ(get("default"), "missing:a:+T:b/4");
    EXPECT_EQ(get("metar"), "b/2");
    EXPECT_EQ(get("extra"), "one/2");
    EXPECT_EQ(get("thing"), "unset");
    EXPECT_EQ(get("tagged"), "yes/2");
    EXPECT_EQ(get("first"), "file/2");

    setVariable("METARS", "env");
    create({"-df=a"});
    EXPECT_EQ(get("metar"), "env/3");
    create({"-df=a", "x", "--m", "cmd", "-df=a", "y", "z", "w"});
    EXPECT_EQ(get("metar"), "env/3") << "the abbreviation of two options belongs to the first declared";
    EXPECT_EQ(get("message"), "cmd/4");
    EXPECT_EQ(get("first"), "x/4");
    EXPECT_EQ(get("rest"), "y\nz\nw/4");
    create({"-df=a", "-mt", "5", "-na", "+use"});
    EXPECT_EQ(get("metar"), "5/4");
    EXPECT_EQ(get("name"), "+use/4");
}

TEST_F(Start, SetsLevelAndDatabasePath)
{
    write("yul.cfg", "*.message none,+warn\n*.file_path /data\n");
    create({"-df=."});
    EXPECT_EQ(Yul::getMessageLevel(), 4U);
    EXPECT_STREQ(Yul::getDatabasePath(), "/data");
    EXPECT_STREQ(Yul::getProgramName(), "plot");
}

TEST_F(Start, HelpListsTheOptions)
{
    testing::internal::CaptureStdout();
    ResrcDB::printHelp("plot", keyed, positional);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              std::string("plot syntax (version:") + Yul::getVersion() +
                  ")\n   plot [options...]\nKeyed options...\n -df file...  Resource/defaults file name\n"
                  " -na name     Program name\n -me level\n -mt x\nPositional options...\n first file\n"
                  " 100% of the rest\n");
}

TEST_F(Settings, ReadFileStoresValidNamesBare)
{
    write("yul.cfg", "*.a 1\nplot.b 2\nother.c 3\n");
    Resrc store;
    store.set("prog", "plot");
    ResrcFile file(store);
    EXPECT_EQ(file.readFile(store, "missing"), 0);
    EXPECT_EQ(file.readFile(store, "."), 1);
    EXPECT_STREQ(store.get("a"), "1");
    EXPECT_EQ(store.getType("b"), Resrc::USER);
    EXPECT_EQ(store.get("c"), nullptr);
}

} // namespace
} // namespace Yul
