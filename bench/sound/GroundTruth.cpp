#include "GroundTruth.h"

#include "SinkLog.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <span>

#include <soxr.h>

namespace bench {

// What has to fit for a place in the music to be recognised. Without high notes more of it is
// alike.
static constexpr std::int64_t snippet = 64;
static constexpr std::int64_t resampledSnippet = 512;

// Frames that a player may take to fade in or out.
static constexpr std::int64_t longestFade = 1200;

// As many zeros in a row are no music.
static constexpr std::int64_t silence = 16;

// Blocks that are further apart were not rendered one after the other.
static constexpr std::int64_t gap = rateHz / 1000;

static constexpr Frame unseen = {std::numeric_limits<float>::quiet_NaN(),
                                 std::numeric_limits<float>::quiet_NaN()};

static double FramesIn(std::int64_t ns) {
    return static_cast<double>(ns) * rateHz / 1e9;
}

static std::int64_t NsIn(double frames) {
    return std::llround(frames * 1e9 / rateHz);
}

// Resampling rings a little where the music begins and ends.
static bool IsZero(Frame frame, bool resampled) {
    const float limit = resampled ? 0.002F : 0.0F;
    return std::fabs(frame.left) <= limit && std::fabs(frame.right) <= limit;
}

static bool IsUnseen(Frame frame) {
    return std::isnan(frame.left);
}

static bool IsLoud(Frame frame) {
    return std::fabs(frame.left) > 0.05F;
}

// Whether @p heard can be @p played at a lower level.
static bool IsFaded(Frame heard, Frame played, bool resampled) {
    const float tolerance = resampled ? 0.01F : 0.002F;
    const auto fits = [tolerance](float part, float whole) {
        return std::fabs(part) <= std::fabs(whole) + tolerance &&
               part * whole >= -2.5F * tolerance * tolerance;
    };
    return fits(heard.left, played.left) && fits(heard.right, played.right);
}

GroundTruth::GroundTruth(const std::string& sinkLogPath, const Music& music) {
    Read(sinkLogPath);
    Recognise(music);
}

void GroundTruth::Read(const std::string& path) {
    std::ifstream log(path, std::ios::binary);
    SinkBlock block = {};
    std::vector<Frame> rendered; // one after the other, at the same rate
    std::int64_t rate = 0;
    while (log.read(reinterpret_cast<char*>(&block), sizeof(block))) {
        if (block.follows == 0 || block.rateHz != rate) {
            Append(rendered, rate);
            rendered.clear();
            rate = block.rateHz;
            MakeRoomAt(block.heardNs);
        }
        const double before = static_cast<double>(rendered.size()) * rateHz;
        blocks.push_back({block.heardNs,
                          static_cast<double>(frames.size()) + before / static_cast<double>(rate)});
        const auto count = static_cast<std::size_t>(block.size) / sizeof(Frame);
        rendered.resize(rendered.size() + count);
        log.read(reinterpret_cast<char*>(rendered.data() + rendered.size() - count), block.size);
    }
    if (blocks.empty()) {
        std::fprintf(stderr, "%s: no sink has written to it\n", path.c_str());
        std::exit(2);
    }
    Append(rendered, rate);
}

// What a block was rendered anew for is not heard: the later block counts.
void GroundTruth::MakeRoomAt(std::int64_t heardNs) {
    while (!blocks.empty() && blocks.back().heardNs >= heardNs) {
        frames.resize(static_cast<std::size_t>(std::llround(blocks.back().sinkFrame)));
        blocks.pop_back();
    }
    if (!blocks.empty()) {
        const double apart = FramesIn(heardNs - blocks.back().heardNs);
        const std::int64_t end = std::llround(blocks.back().sinkFrame + apart);
        if (end - std::ssize(frames) > gap || end < std::ssize(frames)) {
            frames.resize(static_cast<std::size_t>(end), unseen);
        }
    }
    while (!parts.empty() && parts.back().begin >= std::ssize(frames)) {
        parts.pop_back();
    }
}

// In one go, so that there are no joints; soxr gives each frame its own time back.
void GroundTruth::Append(const std::vector<Frame>& rendered, std::int64_t rate) {
    if (rendered.empty() || rate <= 0) { // the first block brings the rate
        return;
    }
    const bool resampled = rate != rateHz;
    if (parts.empty() || parts.back().resampled || resampled) {
        parts.push_back({std::ssize(frames), resampled});
    }
    if (!resampled) {
        frames.insert(frames.end(), rendered.begin(), rendered.end());
        return;
    }
    const std::size_t from = frames.size();
    const std::size_t count = (rendered.size() * rateHz + static_cast<std::size_t>(rate) / 2) /
                              static_cast<std::size_t>(rate);
    frames.resize(from + count);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_VHQ, SOXR_LINEAR_PHASE);
    std::size_t done = 0;
    if (soxr_oneshot(static_cast<double>(rate), static_cast<double>(rateHz), 2, rendered.data(),
                     rendered.size(), nullptr, frames.data() + from, count, &done, nullptr,
                     &quality, nullptr) != nullptr) {
        std::fputs("soxr does not resample\n", stderr);
        std::exit(2);
    }
}

bool GroundTruth::IsResampled(std::int64_t sinkFrame) const {
    const auto next =
        std::upper_bound(parts.begin(), parts.end(), sinkFrame,
                         [](std::int64_t frame, const Part& part) { return frame < part.begin; });
    return next != parts.begin() && std::prev(next)->resampled;
}

std::int64_t GroundTruth::EndOfPart(std::int64_t sinkFrame) const {
    const auto next =
        std::upper_bound(parts.begin(), parts.end(), sinkFrame,
                         [](std::int64_t frame, const Part& part) { return frame < part.begin; });
    return next == parts.end() ? std::ssize(frames) : next->begin;
}

std::int64_t GroundTruth::PassSilence(std::int64_t sinkFrame, std::int64_t musicFrame) {
    const bool resampled = IsResampled(sinkFrame);
    std::int64_t end = sinkFrame;
    while (end < std::ssize(frames) && IsZero(frames[static_cast<std::size_t>(end)], resampled)) {
        ++end;
    }
    if (end > sinkFrame) {
        stretches.push_back({Stretch::Kind::Silent, sinkFrame, end - sinkFrame, musicFrame, 0.0});
    }
    return end;
}

std::int64_t GroundTruth::PassUnseen(std::int64_t sinkFrame, std::int64_t musicFrame) {
    std::int64_t end = sinkFrame;
    while (end < std::ssize(frames) && IsUnseen(frames[static_cast<std::size_t>(end)])) {
        ++end;
    }
    if (end > sinkFrame) {
        stretches.push_back({Stretch::Kind::Unseen, sinkFrame, end - sinkFrame, musicFrame, 0.0});
    }
    return end;
}

// As long as the music goes on frame by frame, at its level or at a lower one for a while.
std::int64_t GroundTruth::FollowMusic(const Music& music, std::int64_t sinkFrame,
                                      Music::Place& place) {
    const bool resampled = IsResampled(sinkFrame);
    const std::int64_t last = EndOfPart(sinkFrame);
    const std::int64_t begin = sinkFrame;
    const std::int64_t from = place.frame;
    std::int64_t faded = 0;
    std::int64_t zeros = 0;
    while (sinkFrame < last && place.frame < std::ssize(music.Frames())) {
        const Frame heard = frames[static_cast<std::size_t>(sinkFrame)];
        if (resampled ? music.IsAtPlace(place, heard) : music.IsFrame(place.frame, heard)) {
            faded = 0;
            zeros = 0;
        } else if (++faded > longestFade || !IsFaded(heard, music.At(place), resampled)) {
            break;
        } else if (zeros = IsZero(heard, resampled) ? zeros + 1 : 0; zeros >= silence) {
            sinkFrame -= zeros - 1;
            place.frame -= zeros - 1;
            break;
        }
        ++sinkFrame;
        ++place.frame;
    }
    if (sinkFrame > begin) {
        stretches.push_back({Stretch::Kind::Runs, begin, sinkFrame - begin, from, place.fraction});
    }
    return sinkFrame;
}

// Which frame of the music is at @p sinkFrame. Quiet places are all alike and the beginning may be
// faded in, so what follows is looked at.
std::optional<Music::Place> GroundTruth::FindPlace(const Music& music, std::int64_t sinkFrame,
                                                   std::int64_t expected) const {
    const bool resampled = IsResampled(sinkFrame);
    const std::int64_t size = resampled ? resampledSnippet : snippet;
    const std::int64_t last = std::min(sinkFrame + longestFade, std::ssize(frames) - size);
    for (std::int64_t at = sinkFrame; at <= last; at += snippet) {
        const auto part =
            std::span(frames).subspan(static_cast<std::size_t>(at), static_cast<std::size_t>(size));
        if (std::none_of(part.begin(), part.end(), IsLoud) ||
            std::any_of(part.begin(), part.end(), IsUnseen)) {
            continue;
        }
        const std::int64_t near = expected + at - sinkFrame;
        auto place = resampled ? music.FindResampled(part, near)
                               : std::optional<Music::Place>({music.Find(part, near), 0.0});
        if (place && place->frame >= 0) {
            place->frame -= at - sinkFrame;
            return place;
        }
    }
    return std::nullopt;
}

void GroundTruth::Recognise(const Music& music) {
    std::int64_t musicFrame = 0;
    std::int64_t at = 0;
    while (at < std::ssize(frames)) {
        at = PassUnseen(at, musicFrame);
        at = PassSilence(at, musicFrame);
        auto place = FindPlace(music, at, musicFrame);
        std::int64_t begin = at;
        if (place && (musicFrame == 0 || place->frame < 0)) {
            // The music may begin with zeros: back, or on, to its first frame.
            begin = std::max<std::int64_t>(at - place->frame, 0);
            Cut(begin);
        }
        std::int64_t end = begin;
        const std::int64_t found = place ? place->frame : 0;
        if (place) {
            place->frame = found + begin - at;
            end = FollowMusic(music, begin, *place);
        }
        if (place && end <= at && found > 0 && begin < at) { // its beginning was not heard
            Cut(begin);
            stretches.push_back({Stretch::Kind::Silent, begin, at - begin, 0, 0.0});
            place->frame = found;
            end = FollowMusic(music, at, *place);
        }
        if (end > at) {
            musicFrame = place->frame;
            at = end;
        } else {
            at = PassUnknown(at, musicFrame);
        }
    }
}

// Forgets what was made of the frames from @p sinkFrame on.
void GroundTruth::Cut(std::int64_t sinkFrame) {
    while (!stretches.empty() && stretches.back().sinkFrame >= sinkFrame) {
        stretches.pop_back();
    }
    if (!stretches.empty()) {
        Stretch& last = stretches.back();
        last.count = std::min(last.count, sinkFrame - last.sinkFrame);
    }
}

std::int64_t GroundTruth::PassUnknown(std::int64_t sinkFrame, std::int64_t musicFrame) {
    std::int64_t end = sinkFrame;
    while (end < std::min(sinkFrame + snippet, std::ssize(frames)) &&
           !IsUnseen(frames[static_cast<std::size_t>(end)])) {
        ++end;
    }
    if (end > sinkFrame) {
        stretches.push_back({Stretch::Kind::Unknown, sinkFrame, end - sinkFrame, musicFrame, 0.0});
    }
    return end;
}

std::int64_t GroundTruth::NsOf(std::int64_t sinkFrame) const {
    const auto frame = static_cast<double>(sinkFrame);
    const auto next =
        std::upper_bound(blocks.begin(), blocks.end(), frame,
                         [](double at, const Block& block) { return at < block.sinkFrame; });
    const Block& block = *std::prev(next);
    return block.heardNs + NsIn(frame - block.sinkFrame);
}

std::int64_t GroundTruth::BeginNs() const {
    for (const Stretch& stretch : stretches) {
        if (stretch.kind == Stretch::Kind::Runs) {
            return NsOf(stretch.sinkFrame);
        }
    }
    return 0;
}

std::int64_t GroundTruth::EndNs() const {
    for (auto stretch = stretches.rbegin(); stretch != stretches.rend(); ++stretch) {
        if (stretch->kind == Stretch::Kind::Runs) {
            return NsOf(stretch->sinkFrame + stretch->count);
        }
    }
    return 0;
}

bool GroundTruth::IsBeginningSeen() const {
    for (const Stretch& stretch : stretches) {
        if (stretch.kind == Stretch::Kind::Runs) {
            return stretch.sinkFrame > 0 || stretch.musicFrame == 0;
        }
    }
    return true;
}

GroundTruth::Moment GroundTruth::At(std::int64_t ns) const {
    const auto beginning = IsBeginningSeen() ? Stretch::Kind::Silent : Stretch::Kind::Unseen;
    const auto next = std::upper_bound(
        blocks.begin(), blocks.end(), ns,
        [](std::int64_t time, const Block& block) { return time < block.heardNs; });
    if (next == blocks.begin()) {
        return {beginning, 0.0};
    }
    const Block& block = *std::prev(next);
    double sinkFrame = block.sinkFrame + FramesIn(ns - block.heardNs);
    if (next != blocks.end()) { // a sink that was late stood still
        sinkFrame = std::min(sinkFrame, next->sinkFrame);
    }
    const auto after = std::upper_bound(stretches.begin(), stretches.end(), sinkFrame,
                                        [](double frame, const Stretch& stretch) {
                                            return frame < static_cast<double>(stretch.sinkFrame);
                                        });
    if (after == stretches.begin()) {
        return {beginning, 0.0};
    }
    const Stretch& stretch = *std::prev(after);
    const bool runs = stretch.kind == Stretch::Kind::Runs;
    const double since = runs ? sinkFrame - static_cast<double>(stretch.sinkFrame) : 0.0;
    return {stretch.kind,
            (static_cast<double>(stretch.musicFrame) + stretch.fraction + since) * 1000.0 / rateHz};
}

} // namespace bench
