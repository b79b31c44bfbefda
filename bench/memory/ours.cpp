// One job of this library and nothing else, for bench/memory.py: ours read FILE, ours list FILE, ours project
#include "geo/Domain.h"
#include "grid/GribFile.h"
#include "grid/Grid.h"

#include <cstring>

namespace {

constexpr int POINTS = 1'000'000;

bool read(char const * name)
{
    Yul::GribFile file(name);
    Yul::Grid grid;
    return file.read(grid) == 1;
}

bool list(char const * name)
{
    Yul::GribFile file(name);
    int count = 0;
    while (file.next() != 0)
        ++count;
    return count > 0;
}

bool project()
{
    Yul::EarthPoints earth;
    for (int i = 0; i < POINTS; ++i)
        earth.add(
            Yul::EarthPoint(15 + static_cast<float>(i % 600) / 10, -150 + static_cast<float>(i) / 1e4F));
    Yul::Points points;
    return Yul::Domain("lamb:40:-95:30:60,40,-95,2,2,1").tran(earth, points) != 0;
}

} // namespace

int main(int argc, char ** argv)
{
    auto const is = [&](char const * job, int count) {
        return argc == count && std::strcmp(argv[1], job) == 0;
    };
    bool const is_done = is("read", 3)   ? read(argv[2])
                         : is("list", 3) ? list(argv[2])
                                         : is("project", 2) && project();
    return is_done ? 0 : 1;
}
