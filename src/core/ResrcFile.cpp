#include "core/ResrcFile.h"

#include "core/FileTool.h"
#include "core/Number.h"
#include "core/Resrc.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/Yul.h"

#include <algorithm>
#include <string_view>

namespace Yul {
namespace {

constexpr std::size_t MAX_SYMBOLS = 10;
constexpr std::size_t MAX_SYMBOL = 19;
constexpr std::size_t MAX_PROG = 30;
constexpr std::size_t MAX_BARE_NAME = 30;
constexpr std::size_t MAX_VALID_NAME = 60;
constexpr char const * DEFAULT_FILE = "yul.cfg";
constexpr char const * ALWAYS_DEFINED = "V6"; // for IF only

/// Files that a directory is searched for, in this order.
constexpr char const * FILES_IN_DIRECTORY[] = {"yul.cfg", ".yuldef", "Yul.res"};

std::string_view bareName(std::string_view name)
{
    std::size_t const mark = name.find_last_of(".*");
    return mark == std::string_view::npos ? name : name.substr(mark + 1);
}

bool matches(std::string_view pattern, std::string_view text)
{
    while (!pattern.empty()) {
        bool const is_star = pattern.front() == '*';
        if (is_star)
            pattern.remove_prefix(1);
        std::string_view const literal = pattern.substr(0, pattern.find('*'));
        std::size_t const place = is_star                     ? text.find(literal)
                                  : text.starts_with(literal) ? 0
                                                              : std::string_view::npos;
        if (place == std::string_view::npos)
            return false;
        text.remove_prefix(place + literal.size());
        pattern.remove_prefix(literal.size());
    }
    return text.empty();
}

/// The names that qualify a setting in a file.
detail::ProgramNames namesFor(Resrc const & store)
{
    detail::ProgramNames names = detail::programNames(store);
    names.prog.resize(std::min(names.prog.size(), MAX_PROG));
    return names;
}

/// The text between the first quote behind the name and the next one.
std::string quotedValue(std::string const & line)
{
    std::string name;
    std::string value;
    detail::scan(line, "%49s \"%249[^\"]", &name, &value);
    return value;
}

std::string settingName(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(), detail::toLower);
    if (name.ends_with(':'))
        name.pop_back();
    return name;
}

} // namespace

ResrcFile::Directive const ResrcFile::DIRECTIVES[] = {
    {"def", &ResrcFile::define},  {"undef", &ResrcFile::undefine}, {"if", &ResrcFile::beginIf},
    {"elif", &ResrcFile::elseIf}, {"else", &ResrcFile::otherwise}, {"end", &ResrcFile::endIf},
};

ResrcFile::ResrcFile(Resrc & settings) : store(settings), names(namesFor(settings)) {}

int ResrcFile::open(char const * path)
{
    close();
    symbols.clear();
    branches.clear();
    names = namesFor(store);
    // A file that nobody named has to be regular: a pipe of its name would keep every program waiting.
    if (!StrLib::valid(path))
        return file.openRegular(DEFAULT_FILE);
    if (!FileTool::isDirectory(path))
        return file.open(path, "r");
    String in_directory;
    for (char const * const name : FILES_IN_DIRECTORY) {
        FileTool::addPath(path, name, in_directory);
        if (FileTool::exist(in_directory.get()))
            return file.openRegular(in_directory.get());
    }
    return 0;
}

int ResrcFile::close()
{
    return file.close();
}

int ResrcFile::setTag(char const * tag)
{
    if (symbols.size() >= MAX_SYMBOLS)
        return 0;
    define(std::string(detail::viewOf(tag)));
    return 1;
}

int ResrcFile::get(String & name, String & value)
{
    std::string line;
    while (file.readLine(line)) {
        std::string first;
        std::string second;
        int const words = line.starts_with('#') ? 0 : detail::scan(line, "%49s %249s", &first, &second);
        if (words < 1)
            continue;
        if (Directive const * const directive = findDirective(first)) {
            (this->*directive->act)(second);
            continue;
        }
        if (words < 2 || !isActive())
            continue;
        name.assign(settingName(std::move(first)));
        value.assign(second.starts_with('"') ? quotedValue(line) : second);
        return 1;
    }
    return -1;
}

ResrcFile::Directive const * ResrcFile::findDirective(std::string const & name)
{
    auto const * const found =
        std::find_if(std::begin(DIRECTIVES), std::end(DIRECTIVES),
                     [&](Directive const & row) { return detail::sameIgnoringCase(row.name, name); });
    return found != std::end(DIRECTIVES) ? found : nullptr;
}

bool ResrcFile::isDefined(std::string const & symbol) const
{
    return std::any_of(symbols.begin(), symbols.end(), [&](std::string const & defined) {
        return detail::sameIgnoringCase(defined, symbol);
    });
}

bool ResrcFile::isActive() const
{
    return std::all_of(branches.begin(), branches.end(), [](Branch b) { return b == Branch::TAKEN; });
}

ResrcFile::Branch * ResrcFile::innermost(char const * directive)
{
    if (!branches.empty())
        return &branches.back();
    Yul::outWarning("ResrcFile::get: %s without an if\n", directive);
    return nullptr;
}

void ResrcFile::define(std::string const & symbol)
{
    if (!symbol.empty() && symbols.size() < MAX_SYMBOLS)
        symbols.push_back(symbol.substr(0, MAX_SYMBOL));
}

void ResrcFile::undefine(std::string const & symbol)
{
    auto const found = std::find_if(symbols.begin(), symbols.end(), [&](std::string const & defined) {
        return detail::sameIgnoringCase(defined, symbol);
    });
    if (found != symbols.end())
        symbols.erase(found);
}

void ResrcFile::beginIf(std::string const & symbol)
{
    if (!symbol.empty())
        branches.push_back(symbol == ALWAYS_DEFINED || isDefined(symbol) ? Branch::TAKEN : Branch::NOT_TAKEN);
}

void ResrcFile::elseIf(std::string const & symbol)
{
    if (symbol.empty())
        return;
    if (Branch * const branch = innermost("elif")) {
        if (*branch != Branch::NOT_TAKEN)
            *branch = Branch::DONE;
        else if (isDefined(symbol))
            *branch = Branch::TAKEN;
    }
}

void ResrcFile::otherwise(std::string const &)
{
    if (Branch * const branch = innermost("else"))
        *branch = *branch == Branch::NOT_TAKEN ? Branch::TAKEN : Branch::DONE;
}

void ResrcFile::endIf(std::string const &)
{
    if (innermost("end") != nullptr)
        branches.pop_back();
}

int ResrcFile::compare(char const * key, char const * pattern) const
{
    return matches(detail::viewOf(pattern), detail::qualifiedName(names, detail::viewOf(key), '.')) ? 1 : 0;
}

int ResrcFile::valid(char const * pattern) const
{
    std::string const bare(bareName(detail::viewOf(pattern)).substr(0, MAX_BARE_NAME));
    return compare(bare.c_str(), pattern);
}

int ResrcFile::parseName(char const * name, String & bare) const
{
    bare.assign(std::string(bareName(detail::viewOf(name))));
    return 1;
}

int ResrcFile::getValid(String & name, String & value)
{
    String found;
    int result = get(found, value);
    while (result >= 0 && valid(found.get()) == 0)
        result = get(found, value);
    if (result >= 0)
        parseName(std::string(found.view().substr(0, MAX_VALID_NAME)).c_str(), name);
    return result;
}

int ResrcFile::readFile(Resrc & into, char const * path)
{
    if (open(path) == 0)
        return 0;
    String name;
    String value;
    while (getValid(name, value) > 0)
        into.set(name.get(), value);
    return 1;
}

} // namespace Yul
