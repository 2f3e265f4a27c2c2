// Program: how the music drives the show's bars, and when it starts, changes and ends.
// Arguments: the MP3 file, its score, and "report" for figures that have no bounds. Status 1 when
// one that has is out of them.
#include "Score.h"
#include "ShowBars.h"
#include "Verdicts.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <sstream>

using content::Bars;
using content::Performance;
using content::unbounded;
using content::Verdicts;

namespace {

using Frames = std::vector<Bars>;

constexpr int framesPerSecond = 1000 / content::frameMs;
constexpr std::size_t framesPerBar = 75;
constexpr double screenLines = 768.0;
constexpr double screenWidth = 1024.0;

/// The value that the part @p share of @p values does not exceed.
double Quantile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    return values.at(static_cast<std::size_t>(share * static_cast<double>(values.size() - 1)));
}

std::vector<std::size_t> BarsBetween(double left, double right) {
    std::vector<std::size_t> bars;
    for (std::size_t bar = 0; bar < std::tuple_size_v<Bars>; ++bar) {
        const double x = content::MiddleOfBar(static_cast<int>(bar));
        if (x >= left && x < right) {
            bars.push_back(bar);
        }
    }
    return bars;
}

double Sum(const Bars& frame, const std::vector<std::size_t>& bars) {
    double sum = 0.0;
    for (const std::size_t bar : bars) {
        sum += frame[bar];
    }
    return sum;
}

double Mean(const Bars& frame, const std::vector<std::size_t>& bars) {
    return Sum(frame, bars) / static_cast<double>(bars.size());
}

/// The first frame at or after @p seconds.
std::size_t FrameAt(double seconds) {
    return static_cast<std::size_t>(std::ceil(seconds * framesPerSecond - 1e-6));
}

double Highest(const std::vector<double>& values, std::size_t from, std::size_t to) {
    double highest = 0.0;
    for (std::size_t i = from; i < std::min(to, values.size()); ++i) {
        highest = std::max(highest, values[i]);
    }
    return highest;
}

/// How different two stretches of @p count frames look: the area that only one of them covers, as
/// a part of what either covers. 0: alike; 1: nothing in common.
double Difference(const Frames& frames, std::size_t first, std::size_t second, std::size_t count) {
    static const auto seen = BarsBetween(0.0, screenWidth);
    double apart = 0.0;
    double covered = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        for (const std::size_t bar : seen) {
            const double a = frames.at(first + i)[bar];
            const double b = frames.at(second + i)[bar];
            apart += std::abs(a - b);
            covered += std::max(a, b);
        }
    }
    return apart / covered;
}

double SmallestDifference(const Frames& frames, std::size_t count) {
    double smallest = 1.0;
    for (std::size_t first = 0; first + count < frames.size(); first += count) {
        for (std::size_t second = first + count; second + count <= frames.size(); second += count) {
            smallest = std::min(smallest, Difference(frames, first, second, count));
        }
    }
    return smallest;
}

/// How different the mean pictures of the musical bars before and after @p seconds look.
double ChangeAt(const Frames& frames, double seconds) {
    Frames means(2, Bars{});
    const std::size_t start = FrameAt(seconds) - framesPerBar;
    for (std::size_t i = 0; i < 2 * framesPerBar; ++i) {
        for (std::size_t bar = 0; bar < std::tuple_size_v<Bars>; ++bar) {
            means[i / framesPerBar][bar] += frames.at(start + i)[bar] / framesPerBar;
        }
    }
    return Difference(means, 0, 1, 1);
}

/// Strokes whose frames, up to the second after them, are not the highest from 0.1 s before to
/// 0.15 s after, or to the next stroke.
int UnseenKicks(const Frames& frames, const std::vector<double>& kicks) {
    std::vector<double> low;
    for (const Bars& frame : frames) {
        low.push_back(Sum(frame, {0, 1, 2, 3, 4, 5}));
    }
    int unseen = 0;
    for (std::size_t i = 0; i < kicks.size(); ++i) {
        const std::size_t at = FrameAt(kicks[i]);
        const std::size_t next = i + 1 < kicks.size() ? FrameAt(kicks[i + 1]) : low.size();
        const double stroke = Highest(low, at, at + 3);
        const double before = Highest(low, at - std::min<std::size_t>(at, 4), at);
        if (stroke < std::max(before, Highest(low, at + 3, std::min(at + 7, next)))) {
            std::printf("            kick at %.3f s: %.0f, before it %.0f\n", kicks[i], stroke,
                        before);
            ++unseen;
        }
    }
    return unseen;
}

void CheckHeights(Verdicts& verdicts, const Frames& frames) {
    const auto seen = BarsBetween(0.0, screenWidth);
    const auto middle = BarsBetween(screenWidth / 3, screenWidth * 2 / 3);
    std::vector<double> highest;
    std::vector<double> middles;
    for (const Bars& frame : frames) {
        double most = 0.0;
        for (const std::size_t bar : seen) {
            most = std::max(most, frame[bar]);
        }
        highest.push_back(most / screenLines * 100.0);
        middles.push_back(Mean(frame, middle));
    }
    verdicts.Check("highest bar, median, of the screen's height", Quantile(highest, 0.5), "%", 35,
                   unbounded);
    verdicts.Check("highest bar, 95th percentile", Quantile(highest, 0.95), "%", 0, 110);
    verdicts.Check("middle third of the bars, mean in the median frame", Quantile(middles, 0.5),
                   "px", 8, unbounded);
}

std::vector<double> OpenAndOffBeatHats(const std::string& score) {
    auto hats = content::Strokes(score, {"OpenHat"});
    for (const double stroke : content::Strokes(score, {"Hat"})) {
        if (std::abs(content::BeatPhase(stroke) - 0.5) < 0.01) {
            hats.push_back(stroke);
        }
    }
    return hats;
}

void CheckStrokes(Verdicts& verdicts, const Frames& frames, const std::string& score) {
    const auto right = BarsBetween(screenWidth * 2 / 3, screenWidth);
    std::vector<double> rights;
    rights.reserve(frames.size());
    for (const Bars& frame : frames) {
        rights.push_back(Mean(frame, right));
    }
    double weakest = unbounded;
    for (const double hat : OpenAndOffBeatHats(score)) {
        weakest = std::min(weakest, Highest(rights, FrameAt(hat), FrameAt(hat) + 3));
    }
    verdicts.Check("right third, mean, at the weakest open or off-beat hat", weakest, "px", 5,
                   unbounded);
    const auto kicks = content::Strokes(score, {"Kick"});
    verdicts.Check("kicks not seen in the six bars at the left, of " + std::to_string(kicks.size()),
                   UnseenKicks(frames, kicks), "", 0, 0);
}

void CheckVariety(Verdicts& verdicts, const Frames& frames) {
    verdicts.Check("difference of the two seconds most alike",
                   SmallestDifference(frames, framesPerSecond), "", 0.35, 1);
    verdicts.Check("difference of the two musical bars most alike",
                   SmallestDifference(frames, framesPerBar), "", 0.35, 1);
    double largest = 0.0; // but where a section begins
    for (int bar = 1; bar < 16; ++bar) {
        largest = std::max(largest, bar == 8 ? 0.0 : ChangeAt(frames, bar * content::barSeconds));
    }
    verdicts.Check("change at 15 s, to the largest from bar to bar elsewhere",
                   ChangeAt(frames, 15.0) / largest, "", 1.1, unbounded);
    verdicts.Check("change at 30 s, to the same", ChangeAt(frames, 30.0) / largest, "", 1.1,
                   unbounded);
}

/// The loudest sample between two moments, of full scale.
double Peak(const std::vector<float>& samples, double fromSeconds, double toSeconds) {
    const auto at = [&](double seconds) {
        return std::min(samples.size(),
                        2 * static_cast<std::size_t>(seconds * content::sampleRateHz));
    };
    float peak = 0.0F;
    for (std::size_t i = at(fromSeconds); i < at(toSeconds); ++i) {
        peak = std::max(peak, std::abs(samples[i]));
    }
    return peak;
}

double Decibels(double ratio) {
    return 20.0 * std::log10(std::max(ratio, 1e-9));
}

void CheckSamples(Verdicts& verdicts, const std::vector<float>& samples, const std::string& score) {
    const double length = static_cast<double>(samples.size()) / 2.0 / content::sampleRateHz;
    verdicts.Check("length, without the encoder's padding", length, "s", 34, 38);
    const auto first = std::find_if(samples.begin(), samples.end(),
                                    [](float sample) { return std::abs(sample) > 0.05F; });
    verdicts.Check("first beat",
                   static_cast<double>(first - samples.begin()) / 2.0 / content::sampleRateHz * 1e3,
                   "ms", 0, 5);
    verdicts.Check(
        "clipped samples",
        static_cast<double>(std::count_if(samples.begin(), samples.end(),
                                          [](float sample) { return std::abs(sample) >= 0.999F; })),
        "", 0, 0);
    verdicts.Check("last stroke", content::Strokes(score, {"Kick"}).back(), "s", 30, 33);
    verdicts.Check("after 33 s, to the loudest from 30 s on",
                   Decibels(Peak(samples, 33.0, 99.0) / Peak(samples, 30.0, 33.0)), "dB",
                   -unbounded, -60);
}

void PrintStereo(const std::vector<float>& samples) {
    double left = 0.0;
    double right = 0.0;
    double both = 0.0;
    for (std::size_t i = 0; i + 1 < samples.size(); i += 2) {
        left += static_cast<double>(samples[i]) * samples[i];
        right += static_cast<double>(samples[i + 1]) * samples[i + 1];
        both += static_cast<double>(samples[i]) * samples[i + 1];
    }
    Verdicts::Print("left to right", Decibels(std::sqrt(left / right)), "dB");
    Verdicts::Print("correlation of left and right", both / std::sqrt(left * right), "");
    Verdicts::Print("lost when played in mono",
                    Decibels(std::sqrt((left + right + 2 * both) / 2 / (left + right))), "dB");
    Verdicts::Print("peak to mean",
                    Decibels(Peak(samples, 0, 99) /
                             std::sqrt((left + right) / static_cast<double>(samples.size()))),
                    "dB");
}

/// The heights of the bars stand for levels: their octaves from 15 to 30 s, a bar's mean of each.
void PrintBalance(const Frames& frames) {
    double reference = 0.0;
    for (std::size_t from = 0, octave = 0; from < 255; from = 2 * from + 1, ++octave) {
        double power = 0.0;
        for (std::size_t frame = 600; frame < 1200; ++frame) {
            for (std::size_t bar = from; bar < std::min<std::size_t>(2 * from + 1, 255); ++bar) {
                power += frames[frame][bar] * frames[frame][bar];
            }
        }
        const double level = 10.0 * std::log10(power / static_cast<double>(from + 1));
        reference = octave == 0 ? level : reference;
        Verdicts::Print("density of the octave from " + std::to_string(86 * from + 43) + " Hz on",
                        level - reference, "dB");
    }
}

int Main(const std::string& music, const std::string& score, bool report) {
    std::ostringstream trace; // the show writes about itself; not of interest here
    std::streambuf* standardOutput = std::cout.rdbuf(trace.rdbuf());
    const Performance performance = content::Perform(music);
    std::cout.rdbuf(standardOutput);

    Verdicts verdicts;
    CheckSamples(verdicts, performance.samples, score);
    CheckHeights(verdicts, performance.frames);
    CheckStrokes(verdicts, performance.frames, score);
    CheckVariety(verdicts, performance.frames);
    if (report) {
        PrintStereo(performance.samples);
        PrintBalance(performance.frames);
    }
    return verdicts.allPass ? 0 : 1;
}

} // namespace

extern "C" int __wrap_main(int argc, char** argv); // the linker gives it this name

int __wrap_main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: music-figures MP3 SCORE [report]\n", stderr);
        return 2;
    }
    try {
        return Main(argv[1], argv[2], argc > 3);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "music-figures: %s\n", error.what());
        return 2;
    }
}
