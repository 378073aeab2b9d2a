#include "tools/service/LostPages.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include "tests/tools/TestFiles.h"

namespace marrowbeck::tools {
namespace {

TEST(LostPages, PagesOfAFileThatBecameShorterReadAsZeros) {
    constexpr size_t size = 1 << 16;
    const TemporaryFolder folder;
    const int file = ::open(folder.write("file", std::string(size, 'x')).c_str(), O_RDWR);
    ASSERT_GE(file, 0);
    auto* const bytes = static_cast<const volatile char*>(mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0));
    ASSERT_NE(bytes, MAP_FAILED);
    {
        const LostPagesReadAsZeros guard;
        EXPECT_EQ(bytes[size - 1], 'x');
        ASSERT_EQ(ftruncate(file, 1), 0);
        EXPECT_EQ(bytes[size - 1], '\0');
        EXPECT_EQ(bytes[size / 2], '\0');
        EXPECT_EQ(bytes[0], 'x');
    }
    ::close(file);
}

}  // namespace
}  // namespace marrowbeck::tools
