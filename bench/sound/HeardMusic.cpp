// Which frame of the music a sink let be heard when: the truth that positions are held to.
#include "HeardMusic.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <span>

namespace bench {

// What has to fit for a place in the music to be recognised.
static constexpr std::int64_t snippet = 64;

// Frames that a player may take to fade in or out.
static constexpr std::int64_t longestFade = 1200;

// As many zeros in a row are no music.
static constexpr std::int64_t silence = 16;

static double FramesIn(std::int64_t ns) {
    return static_cast<double>(ns) * rateHz / 1e9;
}

static std::int64_t NsIn(std::int64_t frames) {
    return frames * 10'000'000 / (rateHz / 100);
}

static bool IsZero(Frame frame) {
    return frame.left == 0.0F && frame.right == 0.0F;
}

static bool IsLoud(Frame frame) {
    return std::fabs(frame.left) > 0.05F;
}

// Whether @p heard can be @p played at a lower level.
static bool IsFaded(Frame heard, Frame played) {
    const auto fits = [](float part, float whole) {
        return std::fabs(part) <= std::fabs(whole) + 0.002F && part * whole >= -0.00001F;
    };
    return fits(heard.left, played.left) && fits(heard.right, played.right);
}

HeardMusic::HeardMusic(const std::string& sinkLogPath, const Music& music) {
    Read(sinkLogPath);
    Recognise(music);
}

// What a block was rendered anew for is not heard: the later block counts.
void HeardMusic::Read(const std::string& path) {
    std::ifstream log(path, std::ios::binary);
    std::int64_t heardNs = 0;
    std::int64_t size = 0;
    while (log.read(reinterpret_cast<char*>(&heardNs), sizeof(heardNs)) &&
           log.read(reinterpret_cast<char*>(&size), sizeof(size))) {
        while (!blocks.empty() && blocks.back().heardNs >= heardNs) {
            frames.resize(static_cast<std::size_t>(blocks.back().sinkFrame));
            blocks.pop_back();
        }
        if (!blocks.empty()) {
            const double apart = FramesIn(heardNs - blocks.back().heardNs);
            const std::int64_t end = blocks.back().sinkFrame + std::llround(apart);
            frames.resize(static_cast<std::size_t>(std::min(end, std::ssize(frames))));
        }
        blocks.push_back({heardNs, std::ssize(frames)});
        const auto count = static_cast<std::size_t>(size) / sizeof(Frame);
        frames.resize(frames.size() + count);
        log.read(reinterpret_cast<char*>(frames.data() + frames.size() - count), size);
    }
    if (blocks.empty()) {
        std::fprintf(stderr, "%s: no sink has written to it\n", path.c_str());
        std::exit(2);
    }
}

std::int64_t HeardMusic::PassSilence(std::int64_t sinkFrame, std::int64_t musicFrame) {
    std::int64_t end = sinkFrame;
    while (end < std::ssize(frames) && IsZero(frames[static_cast<std::size_t>(end)])) {
        ++end;
    }
    if (end > sinkFrame) {
        stretches.push_back({Stretch::Kind::Silent, sinkFrame, end - sinkFrame, musicFrame});
    }
    return end;
}

// As long as the music goes on frame by frame, at its level or at a lower one for a while.
std::int64_t HeardMusic::FollowMusic(const Music& music, std::int64_t sinkFrame,
                                     std::int64_t& musicFrame) {
    const std::int64_t begin = sinkFrame;
    const std::int64_t from = musicFrame;
    std::int64_t faded = 0;
    std::int64_t zeros = 0;
    while (sinkFrame < std::ssize(frames) && musicFrame < std::ssize(music.Frames())) {
        const Frame heard = frames[static_cast<std::size_t>(sinkFrame)];
        if (music.IsFrame(musicFrame, heard)) {
            faded = 0;
            zeros = 0;
        } else if (++faded > longestFade ||
                   !IsFaded(heard, music.Frames()[static_cast<std::size_t>(musicFrame)])) {
            break;
        } else if (zeros = IsZero(heard) ? zeros + 1 : 0; zeros >= silence) {
            sinkFrame -= zeros - 1;
            musicFrame -= zeros - 1;
            break;
        }
        ++sinkFrame;
        ++musicFrame;
    }
    if (sinkFrame > begin) {
        stretches.push_back({Stretch::Kind::Runs, begin, sinkFrame - begin, from});
    }
    return sinkFrame;
}

// Which frame of the music is at @p sinkFrame. Quiet places are all alike and the beginning may be
// faded in, so what follows is looked at.
std::optional<std::int64_t> HeardMusic::FindPlace(const Music& music, std::int64_t sinkFrame,
                                                  std::int64_t expected) const {
    const std::int64_t last = std::min(sinkFrame + longestFade, std::ssize(frames) - snippet);
    for (std::int64_t at = sinkFrame; at <= last; at += snippet) {
        const auto part = std::span(frames).subspan(static_cast<std::size_t>(at), snippet);
        if (std::none_of(part.begin(), part.end(), IsLoud)) {
            continue;
        }
        const std::int64_t place = music.Find(part, expected + at - sinkFrame);
        if (place >= 0) {
            return place - (at - sinkFrame);
        }
    }
    return std::nullopt;
}

void HeardMusic::Recognise(const Music& music) {
    std::int64_t musicFrame = 0;
    std::int64_t at = 0;
    while (at < std::ssize(frames)) {
        at = PassSilence(at, musicFrame);
        const auto place = FindPlace(music, at, musicFrame);
        std::int64_t begin = at;
        if (place && (musicFrame == 0 || *place < 0)) {
            // The music may begin with zeros: back, or on, to its first frame.
            begin = std::max<std::int64_t>(at - *place, 0);
            Cut(begin);
        }
        std::int64_t end = begin;
        if (place) {
            musicFrame = *place + begin - at;
            end = FollowMusic(music, begin, musicFrame);
        }
        if (place && end <= at && *place > 0 && begin < at) { // its beginning was not heard
            Cut(begin);
            stretches.push_back({Stretch::Kind::Silent, begin, at - begin, 0});
            musicFrame = *place;
            end = FollowMusic(music, at, musicFrame);
        }
        at = end > at ? end : PassUnknown(at, musicFrame);
    }
}

// Forgets what was made of the frames from @p sinkFrame on.
void HeardMusic::Cut(std::int64_t sinkFrame) {
    while (!stretches.empty() && stretches.back().sinkFrame >= sinkFrame) {
        stretches.pop_back();
    }
    if (!stretches.empty()) {
        Stretch& last = stretches.back();
        last.count = std::min(last.count, sinkFrame - last.sinkFrame);
    }
}

std::int64_t HeardMusic::PassUnknown(std::int64_t sinkFrame, std::int64_t musicFrame) {
    const std::int64_t end = std::min(sinkFrame + snippet, std::ssize(frames));
    if (end > sinkFrame) {
        stretches.push_back({Stretch::Kind::Unknown, sinkFrame, end - sinkFrame, musicFrame});
    }
    return end;
}

std::int64_t HeardMusic::NsOf(std::int64_t sinkFrame) const {
    const auto next = std::upper_bound(
        blocks.begin(), blocks.end(), sinkFrame,
        [](std::int64_t frame, const Block& block) { return frame < block.sinkFrame; });
    const Block& block = *std::prev(next);
    return block.heardNs + NsIn(sinkFrame - block.sinkFrame);
}

std::int64_t HeardMusic::BeginNs() const {
    for (const Stretch& stretch : stretches) {
        if (stretch.kind == Stretch::Kind::Runs) {
            return NsOf(stretch.sinkFrame);
        }
    }
    return 0;
}

std::int64_t HeardMusic::EndNs() const {
    for (auto stretch = stretches.rbegin(); stretch != stretches.rend(); ++stretch) {
        if (stretch->kind == Stretch::Kind::Runs) {
            return NsOf(stretch->sinkFrame + stretch->count);
        }
    }
    return 0;
}

HeardMusic::Moment HeardMusic::At(std::int64_t ns) const {
    const auto next = std::upper_bound(
        blocks.begin(), blocks.end(), ns,
        [](std::int64_t time, const Block& block) { return time < block.heardNs; });
    if (next == blocks.begin()) {
        return {Stretch::Kind::Silent, 0.0};
    }
    const Block& block = *std::prev(next);
    const double sinkFrame = static_cast<double>(block.sinkFrame) + FramesIn(ns - block.heardNs);
    const auto after = std::upper_bound(stretches.begin(), stretches.end(), sinkFrame,
                                        [](double frame, const Stretch& stretch) {
                                            return frame < static_cast<double>(stretch.sinkFrame);
                                        });
    if (after == stretches.begin()) {
        return {Stretch::Kind::Silent, 0.0};
    }
    const Stretch& stretch = *std::prev(after);
    const bool runs = stretch.kind == Stretch::Kind::Runs;
    const double since = runs ? sinkFrame - static_cast<double>(stretch.sinkFrame) : 0.0;
    return {stretch.kind, (static_cast<double>(stretch.musicFrame) + since) * 1000.0 / rateHz};
}

} // namespace bench
