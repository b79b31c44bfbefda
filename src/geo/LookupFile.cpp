#include "geo/LookupFile.h"

#include "core/File.h"
#include "core/FileTool.h"
#include "core/Number.h"
#include "core/StrLib.h"
#include "core/Yul.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>

namespace Yul::detail {

namespace {

constexpr long MOST_OCTETS = 64L << 20;

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), toLower);
    return result;
}

/// The path of a file in the database directory, or the name itself where the directory has none.
std::string locate(char const * name)
{
    String path;
    FileTool::addPath(Yul::getDatabasePath(), name, path);
    return FileTool::exist(path.get()) ? path.get() : name;
}

/// A file as it was when it was read.
struct Known
{
    long size = 0;
    std::filesystem::file_time_type changed;
    char separator = 0;
    std::shared_ptr<LookupFile const> file;
};

} // namespace

std::shared_ptr<LookupFile const> LookupFile::open(char const * name, char separator)
{
    static std::map<std::string, Known> known;
    if (!StrLib::valid(name))
        return nullptr;
    std::string const path = locate(name);
    std::error_code error;
    Known now;
    now.size = FileTool::getSize(path.c_str());
    now.changed = std::filesystem::last_write_time(path, error);
    now.separator = separator;
    // A domain text from outside may name anything; opening a pipe would keep us waiting.
    if (now.size < 0 || now.size > MOST_OCTETS || error || !File::isRegular(path.c_str()))
        return nullptr;
    if (auto const found = known.find(path); found != known.end() && found->second.size == now.size &&
                                             found->second.changed == now.changed &&
                                             found->second.separator == separator)
        return found->second.file;
    File file;
    if (!file.open(path.c_str(), "r"))
        return nullptr;
    std::string content(static_cast<std::size_t>(now.size), '\0');
    content.resize(file.read(content.data(), content.size()));
    now.file = std::make_shared<LookupFile const>(std::move(content), separator);
    known[path] = now;
    return now.file;
}

LookupFile::LookupFile(std::string content, char separator) : text(std::move(content))
{
    for (std::string_view line : split(text, '\n')) {
        line = trimmed(line);
        std::size_t const middle = line.find(separator);
        if (line.empty() || line.front() == '#' || middle == std::string_view::npos)
            continue;
        Entry const entry{trimmed(line.substr(0, middle)), trimmed(line.substr(middle + 1))};
        index.try_emplace(lowered(entry.key), list.size());
        list.push_back(entry);
    }
}

LookupFile::Entry const * LookupFile::find(std::string_view key) const
{
    auto const found = index.find(lowered(key));
    return found != index.end() ? &list[found->second] : nullptr;
}

} // namespace Yul::detail
