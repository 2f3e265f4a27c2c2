// The decoded music, in which the sound heard is located.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace bench {

inline constexpr std::int64_t rateHz = 44100;

struct Frame {
    float left;
    float right;
};

class Music {
public:
    /// Decodes the whole MP3 file at @p path, 44.1 kHz stereo; ends the program if it cannot.
    explicit Music(const std::string& path);

    std::span<const Frame> Frames() const { return frames; }

    /// The frame of the music at which @p part begins: @p expected if it fits there, else the first
    /// at or after it, else the first of all; -1 if nowhere.
    std::int64_t Find(std::span<const Frame> part, std::int64_t expected) const;

    /// Whether @p heard is frame @p number, up to differences of decoders and sample formats.
    bool IsFrame(std::int64_t number, Frame heard) const;

    /// A position between two frames, in [-0.5, 0.5] from a whole one.
    struct Place {
        std::int64_t frame;
        double fraction;
    };

    /// As Find, for a part that was resampled, of music without high frequencies.
    std::optional<Place> FindResampled(std::span<const Frame> part, std::int64_t expected) const;

    /// As IsFrame, for resampled sound.
    bool IsAtPlace(Place place, Frame heard) const;

    /// The music interpolated between its frames.
    Frame At(Place place) const;

private:
    bool IsAt(std::span<const Frame> part, std::int64_t number) const;
    bool MayBeAt(std::span<const Frame> part, std::int64_t number) const;
    std::optional<Place> Adjust(std::span<const Frame> part, std::int64_t number) const;

    std::vector<Frame> frames;
};

} // namespace bench
