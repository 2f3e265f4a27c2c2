// Tables of sines and cosines.
#pragma once

namespace engine {

/// Entry i is the sine, or cosine, of i radians, not degrees; all 0 until GenerateSinTable.
extern float sinusTable[360];
extern float cosinusTable[360];

/// Fills both tables.
void GenerateSinTable();

} // namespace engine
