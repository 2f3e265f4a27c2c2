// Memory settings for Mesa's software renderer.
#include <malloc.h>

namespace {

/// The renderer allocates the data of a frame, some 8 MB for the show, in small pieces and frees
/// them when the frame is drawn; several frames are in progress at a time. Without this malloc
/// would return freed memory to the system and get it back, cleared, for the next frame: 40 % of
/// the show's processor time.
constexpr int keptBytes = 32 << 20;

/// Before main, so that it covers all allocations.
[[maybe_unused]] const int isKept = mallopt(M_TRIM_THRESHOLD, keptBytes);

} // namespace
