// The checksum of chunks, as zlib computes it.
#include "Checksum.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstddef>
#include <vector>

TEST(Checksum, IsThatOfZlibWhereverTheBytesAreDivided) {
    std::vector<unsigned char> bytes(1000);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<unsigned char>(i * i / 7);
    }
    const auto expected = crc32_z(0, bytes.data(), bytes.size());

    for (const std::size_t first : {std::size_t{0}, std::size_t{1}, std::size_t{999}}) {
        const std::uint32_t beginning = glpng::ExtendedChecksum(0, bytes.data(), first);
        EXPECT_EQ(glpng::ExtendedChecksum(beginning, bytes.data() + first, bytes.size() - first),
                  expected);
    }
}

TEST(Checksum, OfNothingIsZero) {
    EXPECT_EQ(glpng::ExtendedChecksum(0, nullptr, 0), 0U);
}
