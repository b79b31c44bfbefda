// Files cut at every octet: reading ends, and finds what is whole.
//
// YUL_GRIB_SAMPLES names a folder of real files; those of at most 4 kB are cut, or all when YUL_GRIB_ALL_CUTS is set, which
// takes some minutes.
#include "core/Yul.h"
#include "grid/GribFile.h"
#include "grid/Grid.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

namespace Yul {
namespace {

constexpr std::uintmax_t LARGEST = 4096;

/// A file in memory that gets shorter.
class Cuttable
{
public:
    explicit Cuttable(std::string const & octets) : descriptor(memfd_create("cut", 0)), length(octets.size())
    {
        EXPECT_EQ(::write(descriptor, octets.data(), length), static_cast<ssize_t>(length));
    }

    ~Cuttable() { ::close(descriptor); }

    Cuttable(Cuttable const &) = delete;
    Cuttable & operator=(Cuttable const &) = delete;

    [[nodiscard]] std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor); }

    /// False when nothing is left to be cut.
    [[nodiscard]] bool cut()
    {
        if (length == 0)
            return false;
        EXPECT_EQ(::ftruncate(descriptor, static_cast<off_t>(--length)), 0);
        return true;
    }

    [[nodiscard]] std::size_t size() const noexcept { return length; }

private:
    int descriptor;
    std::size_t length;
};

/// Fields that are found; the last one is unpacked as well.
int countFields(std::string const & name)
{
    GribFile file(name.c_str());
    int count = 0;
    while (file.next() != 0)
        ++count;
    Grid last;
    if (count > 0 && file.rewind() != 0) {
        for (int i = 1; i < count; ++i)
            EXPECT_EQ(file.next(), 1);
        file.read(last);
    }
    return count;
}

void expectCleanCuts(std::string const & octets, std::string const & what)
{
    Yul::setMessageLevel(Yul::ERROR);
    Cuttable file(octets);
    int before = countFields(file.name());
    while (file.cut()) {
        int const count = countFields(file.name());
        ASSERT_LE(count, before) << what << " cut to " << file.size();
        before = count;
    }
    EXPECT_EQ(before, 0) << what;
    Yul::setMessageLevel(6);
}

std::string contents(std::filesystem::path const & path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(CutFiles, EndCleanlyAtEveryOctet)
{
    auto const corpus = std::filesystem::path(YUL_DATABASE).parent_path() / "fuzz" / "corpus" / "grib";
    int files = 0;
    for (auto const & entry : std::filesystem::directory_iterator(corpus)) {
        expectCleanCuts(contents(entry.path()), entry.path().filename().string());
        ++files;
    }
    EXPECT_GT(files, 10);
}

TEST(CutFiles, OfRealCentresEndCleanlyAtEveryOctet)
{
    char const * const folder = std::getenv("YUL_GRIB_SAMPLES");
    if (folder == nullptr || *folder == '\0')
        GTEST_SKIP() << "YUL_GRIB_SAMPLES names no folder of sample files";
    bool const is_all = std::getenv("YUL_GRIB_ALL_CUTS") != nullptr;
    for (auto const & entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() != ".json" && (is_all || entry.file_size() <= LARGEST))
            expectCleanCuts(contents(entry.path()), entry.path().filename().string());
}

} // namespace
} // namespace Yul
