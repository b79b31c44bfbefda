#include "naming/NameTable.h"

#include "core/File.h"
#include "core/FileTool.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "core/Yul.h"

namespace Yul::detail {
namespace {

constexpr char const * FILE_KEY = "name_conv";
constexpr char const * DEFAULT_FILE = "name.cnv";
constexpr std::size_t SHORTEST_LINE = 20;

} // namespace

std::string nameTablePath()
{
    char const * const directory = Yul::getResrc("file_path", "");
    String path;
    FileTool::addPath(directory, Yul::getResrc(FILE_KEY, DEFAULT_FILE), path);
    if (!FileTool::exist(path.get()))
        FileTool::addPath(directory, FILE_KEY, path);
    return path.get();
}

NameLookup findNameRow(std::string const & path, std::string_view type, NameTableRow & row)
{
    File file;
    if (file.openRegular(path.c_str()) == 0)
        return NameLookup::NO_FILE;
    Yul::outDebug(5, "Opening name convention file: %s\n", path.c_str());
    std::string line;
    while (file.readLine(line)) {
        if (line.starts_with('#') || line.size() < SHORTEST_LINE)
            continue;
        NameTableRow next;
        scan(line, "%20s %80s %80s %30s %50s", &next.type, &next.file, &next.header, &next.size_and_extension,
             &next.options);
        if (next.type.empty() || !startsIgnoringCase(type, next.type))
            continue;
        next.is_partial = next.type.size() < type.size();
        row = std::move(next);
        return NameLookup::FOUND;
    }
    return NameLookup::NO_LINE;
}

} // namespace Yul::detail
