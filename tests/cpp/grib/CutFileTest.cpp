// Messages cut at every octet: reading ends, finds the fields that are whole, and never gives values of others.
//
// YUL_GRIB_SAMPLES names a folder of real files. Their messages of at most 2 kB are cut, or of as many octets as
// YUL_GRIB_CUTS says: a megabyte of them takes minutes.
#include "core/Yul.h"
#include "cpp/Folder.h"
#include "grid/GribFile.h"
#include "grid/Grid.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

namespace Yul {
namespace {

constexpr std::size_t LARGEST = 2048;

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

std::vector<float> valuesOf(Grid const & grid)
{
    auto const values = grid.getValues();
    return {values.begin(), values.end()};
}

/// Fields that are found. Behind them `read` gives nothing.
int countFields(std::string const & name)
{
    GribFile file(name.c_str());
    Grid grid;
    int count = 0;
    while (file.peek(grid) != 0) {
        EXPECT_EQ(file.next(), 1);
        ++count;
    }
    EXPECT_EQ(file.read(grid), 0);
    EXPECT_TRUE(grid.getValues().empty());
    return count;
}

/// The values of a field, by its number from 0 on; none when it cannot be unpacked.
std::vector<float> readField(std::string const & name, int number)
{
    GribFile file(name.c_str());
    for (int i = 0; i < number; ++i)
        EXPECT_EQ(file.next(), 1);
    Grid grid;
    file.read(grid);
    return valuesOf(grid);
}

/// Cuts a message down to nothing. Returns how often it was cut.
std::size_t cutAway(std::string const & message, std::string const & what)
{
    Cuttable const whole(message);
    Cuttable file(message);
    int before = countFields(file.name());
    while (file.cut()) {
        int const count = countFields(file.name());
        EXPECT_LE(count, before) << what << " cut to " << file.size();
        if (count < before && count > 0) {
            EXPECT_EQ(readField(file.name(), count - 1), readField(whole.name(), count - 1))
                << what << " cut to " << file.size();
        }
        before = count;
    }
    EXPECT_EQ(before, 0) << what;
    return message.size();
}

/// The messages of a file, each with what is between it and the next one.
std::vector<std::string> splitMessages(std::filesystem::path const & path)
{
    std::string const octets = test::octetsOf(path);
    std::vector<std::string> messages;
    GribFile file(path.c_str());
    long begin = 0;
    while (file.next() != 0)
        if (file.getLoc() > begin) {
            messages.push_back(octets.substr(static_cast<std::size_t>(begin),
                                             static_cast<std::size_t>(file.getLoc() - begin)));
            begin = file.getLoc();
        }
    messages.push_back(octets.substr(static_cast<std::size_t>(begin)));
    return messages;
}

/// Every message of a folder's GRIB files. Returns how many cuts were made.
std::size_t cutAll(std::filesystem::path const & folder, std::size_t largest)
{
    int const level = Yul::getMessageLevel();
    Yul::setMessageLevel(Yul::ERROR);
    std::size_t cuts = 0;
    for (auto const & entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension().string().starts_with(".grib"))
            for (auto const & message : splitMessages(entry.path()))
                if (message.size() <= largest)
                    cuts += cutAway(message, entry.path().filename().string());
    Yul::setMessageLevel(level);
    return cuts;
}

TEST(CutFiles, EndCleanlyAtEveryOctet)
{
    auto const corpus = std::filesystem::path(YUL_DATABASE).parent_path() / "fuzz" / "corpus" / "grib";
    EXPECT_GT(cutAll(corpus, LARGEST), 5000U);
}

TEST(CutFiles, OfRealCentresEndCleanlyAtEveryOctet)
{
    char const * const folder = std::getenv("YUL_GRIB_SAMPLES");
    if (folder == nullptr || *folder == '\0')
        GTEST_SKIP() << "YUL_GRIB_SAMPLES names no folder of sample files";
    char const * const largest = std::getenv("YUL_GRIB_CUTS");
    std::cout << cutAll(folder, largest != nullptr ? std::strtoul(largest, nullptr, 10) : LARGEST)
              << " cuts\n";
}

} // namespace
} // namespace Yul
