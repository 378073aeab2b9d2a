#include "tools/pictures/ImageHeader.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/tools/TestFiles.h"

namespace marrowbeck::tools {
namespace {

ImageHeader readFromMemory(const std::string& bytes) {
    ByteSource source(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
    return readImageHeader(source);
}

std::string littleEndian(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i & 0xff);
    return text;
}

/// An entry of a TIFF directory with one value of type LONG.
std::string entry(unsigned tag, std::uint32_t value, std::uint32_t count = 1) {
    return littleEndian(tag, 2) + littleEndian(4, 2) + littleEndian(count, 4) + littleEndian(value, 4);
}

TEST(ImageHeader, RawCameraFileTellsOfItsPictureNotOfItsPreview) {
    const std::string preview = littleEndian(4, 2) + entry(254, 1) + entry(256, 160) + entry(257, 120) +
                                entry(330, 8 + 2 + 4 * 12 + 4) + littleEndian(0, 4);
    const std::string raw = littleEndian(4, 2) + entry(254, 0) + entry(256, 6000) + entry(257, 4000) + entry(258, 14);
    const ImageHeader header = readFromMemory("II*" + littleEndian(0, 1) + littleEndian(8, 4) + preview + raw);
    EXPECT_EQ(header.width, 6000U);
    EXPECT_EQ(header.height, 4000U);
    EXPECT_EQ(header.bitsPerChannel, 14U);
}

TEST(ImageHeader, TiffThatPointsAtItselfOrOutOfTheFileComesToAnEnd) {
    const std::string start = "II*" + littleEndian(0, 1) + littleEndian(8, 4);
    const std::string self = littleEndian(4, 2) + entry(254, 1) + entry(256, 16) + entry(257, 12) + entry(330, 8);
    EXPECT_EQ(readFromMemory(start + self).width, 16U);
    const std::string vast = littleEndian(0xffff, 2) + entry(256, 16) + entry(257, 12) + entry(258, ~0U, ~0U);
    EXPECT_EQ(readFromMemory(start + vast).height, 12U);
    const std::string big = "II+" + littleEndian(0, 1) + littleEndian(8, 4) + littleEndian(~0ULL, 8);
    EXPECT_EQ(readFromMemory(big).width, 0U);
}

TEST(ImageHeader, TurnedBmpHasAPositiveHeight) {
    std::string bytes = readFile(picture("rgb.bmp"));
    bytes.replace(22, 4, littleEndian(static_cast<std::uint32_t>(-32), 4));
    EXPECT_EQ(readFromMemory(bytes).height, 32U);
}

/// Flips, overwrites, cuts and copies a few bytes: most of the time near the beginning, where headers are.
std::string mutate(std::string bytes, std::mt19937& random) {
    const auto below = [&random](size_t limit) { return random() % std::max<size_t>(limit, 1); };
    for (size_t change = 0; change <= below(6) && !bytes.empty(); ++change) {
        const size_t at = below(below(4) == 0 ? bytes.size() : std::min<size_t>(bytes.size(), 200));
        switch (below(5)) {
            case 0:
                bytes[at] = static_cast<char>(bytes[at] ^ (1 << below(8)));
                break;
            case 1:
                bytes[at] = static_cast<char>(random());
                break;
            case 2:
                bytes.replace(at, 4, below(2) == 0 ? std::string(4, '\xff') : std::string(4, '\0'));
                break;
            case 3:
                bytes.resize(at);
                break;
            default:
                bytes.insert(at, bytes.substr(below(bytes.size()), 12));
        }
    }
    return bytes;
}

TEST(ImageHeader, DamagedHeadersAreReadWithoutHarm) {
    std::vector<std::string> samples;
    for (const auto& file : std::filesystem::directory_iterator(MARROWBECK_TEST_PICTURES))
        samples.push_back(readFile(file.path()).substr(0, 8192));
    std::sort(samples.begin(), samples.end());
    ASSERT_GT(samples.size(), 30U);

    std::mt19937 random(20240229);
    size_t recognised = 0;
    for (int round = 0; round < 400; ++round) {
        for (const std::string& sample : samples) {
            const std::string damaged = mutate(sample, random);
            const ImageHeader header = readFromMemory(damaged);
            if (header.width > 0) ++recognised;
        }
    }
    // The mutations must be gentle enough to get past the signatures.
    EXPECT_GT(recognised, samples.size() * 100);
}

TEST(ImageHeader, EveryCutOfASampleIsReadWithoutHarm) {
    for (const char* const name : {"rgb.jpg", "alpha.png", "big-endian.tif", "transparent.gif", "alpha.bmp",
                                   "lossless-alpha.webp", "rgb.jp2", "rgb.psd"}) {
        const std::string whole = readFile(picture(name));
        for (size_t length = 0; length < whole.size(); ++length) {
            const ImageHeader header = readFromMemory(whole.substr(0, length));
            EXPECT_TRUE(header.width == 0 || header.width == 48) << name << " cut at " << length;
        }
    }
}

}  // namespace
}  // namespace marrowbeck::tools
