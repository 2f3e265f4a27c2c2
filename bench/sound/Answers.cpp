#include "Answers.h"

#include "Clock.h"

#include <fstream>
#include <iomanip>

namespace bench {

void WriteAnswers(const std::string& path, const std::vector<Answer>& answers) {
    std::ofstream file(path);
    file << std::fixed << std::setprecision(4);
    for (const Answer& answer : answers) {
        file << answer.ns << ' ' << answer.musicMs << '\n';
    }
}

std::vector<Answer> ReadAnswers(const std::string& path) {
    std::vector<Answer> answers;
    std::ifstream file(path);
    for (Answer answer = {}; file >> answer.ns >> answer.musicMs;) {
        answers.push_back(answer);
    }
    return answers;
}

static constexpr std::int64_t periodNs = 1'000'000;

Millisecond::Millisecond() : nextNs(sound::MonotonicNs()) {}

void Millisecond::Wait() {
    const std::int64_t now = sound::MonotonicNs();
    nextNs += periodNs;
    if (nextNs <= now) {
        nextNs = now + periodNs;
    }
    const timespec until = {nextNs / 1'000'000'000, nextNs % 1'000'000'000};
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr);
}

} // namespace bench
