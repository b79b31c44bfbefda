#include "program/ResrcDB.h"

#include "core/Clamp.h"
#include "core/Format.h"
#include "core/Output.h"
#include "core/Resrc.h"
#include "core/ResrcCL.h"
#include "core/ResrcEnv.h"
#include "core/ResrcFile.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "core/Yul.h"
#include "time/DateTool.h"

#include <algorithm>
#include <array>

namespace Yul {
namespace {

/// Directories and files to read settings from. The system's come last and so override the current directory.
constexpr char const * DEFAULT_PATH = ".:/home/yul/etc:/usr/local/etc/yul:/usr/local/yul/etc:/etc/yul";

/// The two lists of options as one walk: keyed options first.
class Options
{
public:
    Options(ResrcDBList const & keyed_options, ResrcDBList const & positional_options)
        : lists{&keyed_options, &positional_options}
    {
    }

    template <class Action> void each(Action action) const
    {
        for (ResrcDBList const * const list : lists)
            for (int i = 0; i < list->getNum(); ++i)
                action(*list->get(i));
    }

private:
    std::array<ResrcDBList const *, 2> lists;
};

bool isUseName(String const & key)
{
    return ResrcCL::compare(key.get(), "name", "na") != 0;
}

/// Abbreviations of "default" are left to the program's own options.
bool isDefaultPath(String const & key)
{
    return key.view() == "default" || key.view() == "df";
}

void setProgramNames(Strings const & args)
{
    String program;
    ResrcDB::decodeProgramName(args.getNum() > 0 ? args.getString(0) : "", program);
    Yul::addResrc("prog", program.get(), Resrc::BASE);
    Yul::setProgramName(program.get());
    Yul::addResrc("name", program.get(), Resrc::BASE);
}

void readEnvironment(char const * key, char const * alt)
{
    String value;
    if (ResrcEnv::get(Yul::resrc(), key, alt, value) != 0)
        Yul::addResrc(key, value.get(), Resrc::ENV);
}

/// Takes the use name and the search path from the arguments: they decide how everything else is read.
void scanArguments(Strings const & args)
{
    ResrcCL line(args);
    String key;
    String value;
    for (int result = line.getKeyed(key, value); result >= 0; result = line.getKeyed(key, value)) {
        if (result == 0)
            line.getPosition(value);
        else if (isUseName(key))
            Yul::addResrc("name", value.get(), Resrc::COMMAND);
        else if (isDefaultPath(key))
            Yul::addResrc("default", value.get(), Resrc::COMMAND);
    }
}

void storeSetting(ResrcFile const & file, Options const & options, String const & name, String const & value)
{
    bool is_declared = false;
    options.each([&](ResrcDBItem const & item) {
        if (file.compare(item.getKey(), name.get()) == 0)
            return;
        Yul::addResrc(item.getKey(), value.get(), Resrc::FILE);
        is_declared = true;
    });
    if (is_declared || file.valid(name.get()) == 0)
        return;
    String bare;
    file.parseName(name.get(), bare);
    Yul::addResrc(bare.get(), value.get(), Resrc::FILE);
}

void readFiles(Options const & options)
{
    Strings const path(Yul::getResrc("default", DEFAULT_PATH), ':');
    std::string tag;
    ResrcFile file(Yul::resrc());
    for (int i = 0; i < path.getNum(); ++i) {
        char const * const element = path.getString(i);
        if (*element == '+') {
            tag = element + 1;
            continue;
        }
        if (file.open(element) == 0)
            continue;
        if (!tag.empty())
            file.setTag(tag.c_str());
        String name;
        String value;
        while (file.get(name, value) > 0)
            storeSetting(file, options, name, value);
    }
}

void storeKeyed(ResrcDBList const & keyed, String const & key, String const & value)
{
    if (isUseName(key) || isDefaultPath(key))
        return;
    for (int i = 0; i < keyed.getNum(); ++i) {
        ResrcDBItem const & item = *keyed.get(i);
        if (ResrcCL::compare(key.get(), item.getKey(), item.getBrief()) == 0)
            continue;
        Yul::addResrc(item.getKey(), value.get(), Resrc::COMMAND);
        return;
    }
}

void storePositional(ResrcDBList const & positional, int position, String const & value)
{
    if (positional.getNum() == 0)
        return;
    char const * const key = positional.get(std::min(position, positional.getNum() - 1))->getKey();
    if (Yul::getResrcType(key) == Resrc::COMMAND)
        Yul::appendResrc(key, value.get());
    else
        Yul::addResrc(key, value.get(), Resrc::COMMAND);
}

void readArguments(Strings const & args, ResrcDBList const & keyed, ResrcDBList const & positional)
{
    ResrcCL line(args);
    String key;
    String value;
    for (int result = line.getKeyed(key, value); result >= 0; result = line.getKeyed(key, value)) {
        if (result > 0)
            storeKeyed(keyed, key, value);
        else
            storePositional(positional, line.getPosition(value), value);
    }
}

void applySettings()
{
    Yul::setMessageLevel(Yul::getResrc("message"));
    if (char const * const path = Yul::getResrc("file_path"))
        Yul::setDatabasePath(path);
    if (char const * const time = Yul::getResrc("cur_time"))
        Yul::setInitTime(detail::clampToInt(DateTool::getSeconds(time)));
    if (Yul::isDebug(5))
        Yul::printAllResrc();
}

void printHelpLines(ResrcDBList const & options)
{
    for (int i = 0; i < options.getNum(); ++i)
        Yul::outMessage(1, " %s\n", options.get(i)->getHelp());
}

} // namespace

ResrcDBItem::ResrcDBItem(char const * key, char const * env, char const * brief, char const * help)
{
    set(key, env, brief, help);
}

int ResrcDBItem::set(char const * key, char const * env, char const * brief, char const * help)
{
    key_text = detail::viewOf(key);
    env_text = detail::viewOf(env);
    brief_text = detail::viewOf(brief);
    help_text = detail::viewOf(help);
    return 1;
}

int ResrcDBList::add(char const * key, char const * env, char const * brief, char const * help)
{
    items.emplace_back(key, env, brief, help);
    return 1;
}

int ResrcDBList::add(ResrcDBItem const & item)
{
    items.push_back(item);
    return 1;
}

int ResrcDBList::rewind()
{
    cursor = 0;
    return 1;
}

ResrcDBItem * ResrcDBList::first()
{
    rewind();
    return next();
}

ResrcDBItem * ResrcDBList::next()
{
    return cursor < getNum() ? get(cursor++) : nullptr;
}

ResrcDBItem * ResrcDBList::get(int i)
{
    return i >= 0 && i < getNum() ? &items[static_cast<std::size_t>(i)] : nullptr;
}

ResrcDBItem const * ResrcDBList::get(int i) const
{
    return i >= 0 && i < getNum() ? &items[static_cast<std::size_t>(i)] : nullptr;
}

int ResrcDBList::print() const
{
    std::string listing;
    for (ResrcDBItem const & item : items)
        listing +=
            detail::format("%s %s %s %s\n", item.getKey(), item.getEnv(), item.getBrief(), item.getHelp());
    detail::writeOut(listing);
    return 1;
}

int ResrcDB::create(Strings & args, ResrcDBList & keyed, ResrcDBList & positional)
{
    Options const options(keyed, positional);
    setProgramNames(args);
    readEnvironment("default", nullptr);
    scanArguments(args);
    readFiles(options);
    options.each([](ResrcDBItem const & item) { readEnvironment(item.getKey(), item.getEnv()); });
    readArguments(args, keyed, positional);
    applySettings();
    return 1;
}

int ResrcDB::decodeProgramName(char const * path, String & name)
{
    if (path == nullptr)
        return 0;
    std::string_view const text(path);
    std::size_t const slash = text.rfind('/');
    name.assign(slash == std::string_view::npos ? text : text.substr(slash + 1));
    return 1;
}

int ResrcDB::printHelp(char const * prog, ResrcDBList & keyed, ResrcDBList & positional)
{
    std::string const program(detail::viewOf(prog));
    Yul::outMessage(1, "%s syntax (version:%s)\n", program.c_str(), Yul::getVersion());
    Yul::outMessage(1, "   %s [options...]\n", program.c_str());
    Yul::outMessage(1, "Keyed options...\n");
    Yul::outMessage(1, " -df file...  Resource/defaults file name\n");
    Yul::outMessage(1, " -na name     Program name\n");
    printHelpLines(keyed);
    Yul::outMessage(1, "Positional options...\n");
    printHelpLines(positional);
    return 1;
}

} // namespace Yul
