// What Mesa's software renderer needs of the memory it draws from.
#include <malloc.h>

namespace {

/// The renderer allocates what it knows of a frame, some 8 MB for the show, in small pieces and
/// frees them when the frame is drawn; several frames are on their way at a time. Given back to the
/// system, they would be taken from it, cleared, for the next frame: 40 % of the show's processor
/// time.
constexpr int keptBytes = 32 << 20;

/// Before main, so that it holds for all the memory there is.
[[maybe_unused]] const int isKept = mallopt(M_TRIM_THRESHOLD, keptBytes);

} // namespace
