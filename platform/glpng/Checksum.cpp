#include "Checksum.h"

#include <array>

namespace glpng {

/// For each value of a byte the remainder that it leaves.
static constexpr std::array<std::uint32_t, 256> remainders = [] {
    constexpr std::uint32_t polynomial = 0xEDB88320; // its bits in reverse
    std::array<std::uint32_t, 256> table = {};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t remainder = byte;
        for (int bit = 0; bit < 8; ++bit) {
            remainder = (remainder & 1) != 0 ? remainder >> 1 ^ polynomial : remainder >> 1;
        }
        table[byte] = remainder;
    }
    return table;
}();

std::uint32_t ExtendedChecksum(std::uint32_t checksum, const unsigned char* bytes,
                               std::size_t count) {
    std::uint32_t remainder = ~checksum;
    for (std::size_t i = 0; i < count; ++i) {
        remainder = remainder >> 8 ^ remainders[(remainder ^ bytes[i]) & 0xFF];
    }
    return ~remainder;
}

} // namespace glpng
