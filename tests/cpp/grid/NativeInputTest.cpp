#include "cpp/Folder.h"
#include "grid/native/Input.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace Yul::detail::native {
namespace {

TEST(NativeInput, ReadsAheadWithinItsBufferAcrossItsEndAndBehind)
{
    test::Folder const folder;
    std::string octets = "line\n";
    for (int i = 0; i < 30000; ++i)
        octets += static_cast<char>(i % 251);
    auto const input = std::make_unique<Input>();
    ASSERT_EQ(input->open(folder.write("file", octets).c_str()), 1);
    ASSERT_EQ(input->readLine(10), "line");
    std::string const behind_line = octets.substr(5);
    for (std::size_t const distance : {0, 1, 4000, 4090, 4091, 4092, 5000, 29000, 29990, 30000})
        for (std::size_t const count : {1, 50, 6000}) {
            std::string read(count, '?');
            read.resize(input->readAhead(distance, read.data(), count));
            EXPECT_EQ(read, behind_line.substr(distance, count)) << distance << ", " << count;
        }
    EXPECT_TRUE(input->skip(5000)) << "reading ahead has moved nothing";
    EXPECT_EQ(input->look(1).substr(0, 1), behind_line.substr(5000, 1));
}

} // namespace
} // namespace Yul::detail::native
