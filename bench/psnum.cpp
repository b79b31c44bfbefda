// Number text of a page, "%3.2f %3.2f ln" lines, beside fprintf into a file with a large buffer. The text is the same.
#include "Interleaved.h"
#include "graphics/PsNumber.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t LINES = 100000;
constexpr std::size_t ROOM = 64; // octets of one line

struct Place
{
    float x;
    float y;
};

std::vector<Place> placesUpTo(float limit, bool has_ties)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<float> coordinate(-limit / 20, limit);
    std::vector<Place> places(LINES);
    for (Place & p : places) {
        p = {coordinate(random), coordinate(random)};
        if (has_ties)
            p = {std::round(p.x * 8) / 8, std::round(p.y * 8) / 8};
    }
    return places;
}

std::size_t writeLines(std::vector<Place> const & places, char * out)
{
    char const * const start = out;
    for (Place const & p : places) {
        out = Yul::detail::writeFixed2(out, p.x);
        *out++ = ' ';
        out = Yul::detail::writeFixed2(out, p.y);
        std::memcpy(out, " ln\n", 4);
        out += 4;
    }
    return static_cast<std::size_t>(out - start);
}

std::string printed(std::vector<Place> const & places)
{
    std::string text;
    char line[ROOM];
    for (Place const & p : places)
        text.append(line,
                    static_cast<std::size_t>(std::snprintf(line, sizeof line, "%3.2f %3.2f ln\n", p.x, p.y)));
    return text;
}

bool measure(char const * job, std::vector<Place> const & places)
{
    std::vector<char> text(LINES * ROOM);
    std::size_t const size = writeLines(places, text.data());
    if (std::string_view(text.data(), size) != printed(places))
        return false;
    std::FILE * const nowhere = std::fopen("/dev/null", "w");
    std::vector<char> buffer(1U << 20);
    std::setvbuf(nowhere, buffer.data(), _IOFBF, buffer.size());
    auto const ours = [&] {
        writeLines(places, text.data());
        asm volatile("" : : "r"(text.data()) : "memory");
    };
    auto const peer = [&] {
        for (Place const & p : places)
            std::fprintf(nowhere, "%3.2f %3.2f ln\n", p.x, p.y);
    };
    auto const times = bench::medians(9, {ours, peer});
    std::fclose(nowhere);
    bench::printRow(job, "fprintf", times[0], times[1], LINES, 15);
    return true;
}

} // namespace

int main()
{
    bool const is_same = measure("page numbers, one line", placesUpTo(776, false)) &&
                         measure("page numbers, halves to round", placesUpTo(776, true)) &&
                         measure("page numbers, far away", placesUpTo(30000, false));
    return is_same ? 0 : 1;
}
