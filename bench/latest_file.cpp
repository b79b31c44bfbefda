// The search for the latest file over 10,000 steps in a directory of 50,000 files, beside as many bare stat calls.
#include "Interleaved.h"
#include "core/Yul.h"
#include "naming/NameConv.h"
#include "naming/NameConvFile.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <stdlib.h>
#include <sys/stat.h>

int main()
{
    constexpr int STEPS = 10000;
    constexpr int FILES = 50000;
    std::string pattern = (std::filesystem::temp_directory_path() / "yul-bench-XXXXXX").string();
    std::string const folder = mkdtemp(pattern.data());
    for (int i = 0; i < FILES; ++i)
        std::ofstream(folder + "/other-" + std::to_string(i));

    Yul::Yul::setResrc("data_path", folder.c_str());
    Yul::NameConv convention("@%D/%Y%m%d%h%n.grb");
    Yul::Date date(1794676980L);
    std::vector<std::string> names;
    Yul::String name;
    for (int i = 0; i < STEPS; ++i) {
        convention.encodeFile(date, name);
        names.emplace_back(name.get());
        date.set(date.getSeconds() - 60);
    }
    std::ofstream(names.back()); // the last candidate is the one that is there

    Yul::NameConvFile found;
    auto const search = [&] { convention.setLatest("#202611141723la#10000", found); };
    auto const bare = [&] {
        struct stat info
        {
        };
        for (std::string const & candidate : names)
            static_cast<void>(stat(candidate.c_str(), &info));
    };
    search();
    bool const is_found = found.getFilename() == names.back();
    auto const times = bench::medians(15, {search, bare});
    std::filesystem::remove_all(folder);
    if (!is_found)
        return 1;
    bench::printRow("latest file, one step", "stat", times[0], times[1], STEPS, 0.5);
    return 0;
}
