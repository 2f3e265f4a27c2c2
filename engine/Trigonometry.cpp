#include "Trigonometry.h"

#include <cmath>

namespace engine {

float sinusTable[360] = {};
float cosinusTable[360] = {};

void GenerateSinTable() {
    for (int i = 0; i < 360; ++i) {
        const auto angle = static_cast<float>(i); // taken as radians on purpose
        sinusTable[i] = std::sin(angle);
        cosinusTable[i] = std::cos(angle);
    }
}

} // namespace engine
