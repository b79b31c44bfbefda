// Bulletin feeds: hopping over what is not selected beside a bare search for start marks, and how time and memory
// grow with the feed.
#include "Interleaved.h"
#include "surface/WmoParse.h"
#include "surface/WmoProduct.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <stdlib.h>
#include <sys/resource.h>

namespace {

constexpr int BULLETINS = 41000; // about 100 MB
constexpr int LISTED = 820;      // by each index
constexpr char const * TYPES[] = {"SAUS", "SPUS", "SMNT", "FTUS", "WWUS",
                                  "FPUS", "NOUS", "UAUS", "SXUS", "ASUS"};

std::string heading(int i)
{
    return std::string(TYPES[i % 10]) + std::to_string(10 + i % 89) + " KWBC 060000";
}

std::string bulletin(int i)
{
    std::string text =
        "\x01\r\r\n" + std::to_string(i % 1000) + " \r\r\n" + heading(i) + "\r\r\nMTRDEN\r\r\n";
    for (int line = 0; line < 3 + i % 57; ++line)
        text += "KDEN 060053Z 24010KT 10SM FEW120 SCT250 07/M05 A3017 RMK AO2 SLP197 T00721050=\r\r\n";
    return text + "\x03";
}

/// Writes a feed and an index that lists LISTED of its bulletins.
void writeFeed(std::string const & name, int bulletins)
{
    std::ofstream feed(name, std::ios::binary);
    std::ofstream index(name + ".idx");
    std::size_t position = 0;
    for (int i = 0; i < bulletins; ++i) {
        std::string const text = bulletin(i);
        if (i % (bulletins / LISTED) == 0)
            index << position - (i > 0 ? 1 : 0) << ' ' << heading(i)
                  << " / MTRDEN\n"; // at the ETX before SOH
        feed << text;
        position += text.size();
    }
}

/// Bulletins that the pattern selects.
int count(Yul::Filename const & names, char const * pattern)
{
    Yul::WmoParse feed;
    feed.setHeader(pattern);
    feed.open(names);
    Yul::WmoProduct product;
    int n = 0;
    while (feed.getProduct(product) != 0)
        ++n;
    return n;
}

/// The bare work: the file in one piece, and a search for every start mark.
int countMarks(std::string const & name, std::vector<char> & buffer)
{
    std::FILE * const file = std::fopen(name.c_str(), "rb");
    std::size_t const size = std::fread(buffer.data(), 1, buffer.size(), file);
    std::fclose(file);
    int n = 0;
    char const * const end = buffer.data() + size;
    for (char const * p = buffer.data();
         (p = static_cast<char const *>(std::memchr(p, 1, static_cast<std::size_t>(end - p)))) != nullptr;
         ++p)
        ++n;
    return n;
}

long peakKilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

int main()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "yul-bench-XXXXXX").string();
    std::string const folder = mkdtemp(pattern.data());
    std::string const large = folder + "/large";
    std::string const small = folder + "/small";
    writeFeed(large, BULLETINS);
    writeFeed(small, BULLETINS / 10);

    bool is_right = count(small.c_str(), "") == BULLETINS / 10;
    long const small_peak = peakKilobytes();
    is_right = is_right && count(large.c_str(), "") == BULLETINS;
    long const large_peak = peakKilobytes();

    auto const bytes = std::filesystem::file_size(large);
    std::vector<char> buffer(bytes);
    is_right = is_right && countMarks(large, buffer) == BULLETINS;
    Yul::Filename const large_indexed(large.c_str(), (large + ".idx").c_str());
    Yul::Filename const small_indexed(small.c_str(), (small + ".idx").c_str());
    is_right = is_right && count(large_indexed, "") == LISTED && count(small_indexed, "") == LISTED;

    auto const hop =
        bench::medians(11, {[&] { count(large.c_str(), "ZZ"); }, [&] { countMarks(large, buffer); }});
    auto const listed =
        bench::medians(31, {[&] { count(large_indexed, ""); }, [&] { count(small_indexed, ""); }});
    std::filesystem::remove_all(folder);
    if (!is_right)
        return 1;
    bench::printRow("feed of 100 MB, nothing selected, a kB", "read and memchr", hop[0], hop[1],
                    static_cast<double>(bytes) / 1e3, 0.5);
    bench::printRow("820 bulletins by index, feed of 100 MB, each", "feed of 10 MB", listed[0], listed[1],
                    LISTED, 0.5);
    std::printf("# peak memory: %ld kB behind a feed of 10 MB, %ld kB behind one of 100 MB\n", small_peak,
                large_peak);
    return 0;
}
