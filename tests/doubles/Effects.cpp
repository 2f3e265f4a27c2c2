#include "Effects.h"

#include "ExitGuard.h"
#include "StandardOutput.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace doubles {

namespace {

struct Watch {
    StandardOutput output;
    std::string lines;

    void TakeOutput() {
        const std::string text = output.TakeNew();
        if (!text.empty()) {
            lines += "print " + Text(text) + "\n";
        }
    }
};

Watch* watch = nullptr; // of the action going on

template <typename Number>
std::string Shortest(Number value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return {buffer, result.ptr};
}

} // namespace

std::string EffectsOf(const std::function<void()>& action) {
    Watch ownWatch;
    watch = &ownWatch;
    action();
    watch = nullptr;
    ownWatch.TakeOutput();
    return ownWatch.lines;
}

std::string OutputOf(const std::function<void()>& action) {
    StandardOutput output;
    action();
    return output.TakeNew();
}

void ReportEffectsAtExit(const std::function<void()>& action) {
    ExitGuard::Lift();
    watch = new Watch; // until the process ends
    std::atexit([] {
        watch->TakeOutput();
        std::fputs(watch->lines.c_str(), stderr);
    });
    action();
}

std::string Lines(std::initializer_list<std::string> lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

std::string Only(const std::string& prefix, const std::string& effects) {
    std::istringstream stream(effects);
    std::string text;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(prefix)) {
            text += line + "\n";
        }
    }
    return text;
}

int Count(const std::string& prefix, const std::string& effects) {
    int count = 0;
    for (const char character : Only(prefix, effects)) {
        count += character == '\n' ? 1 : 0;
    }
    return count;
}

std::string Text(bool value) {
    return value ? "true" : "false";
}

std::string Text(int value) {
    return std::to_string(value);
}

std::string Text(unsigned int value) {
    return std::to_string(value);
}

std::string Text(float value) {
    return Shortest(value);
}

std::string Text(double value) {
    return Shortest(value);
}

std::string Text(const char* value) {
    return value == nullptr ? "null" : Text(std::string(value));
}

std::string Text(const std::string& value) {
    std::string text = "\"";
    for (const char character : value) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\n') {
            text += "\\n";
        } else if (character == '"' || character == '\\') {
            text += std::string("\\") + character;
        } else if (byte < 0x20 || byte > 0x7E) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned int>(byte));
            text += escape;
        } else {
            text += character;
        }
    }
    return text + "\"";
}

std::string Text(const Word& value) {
    return value.text;
}

bool IsRecording() {
    return watch != nullptr;
}

void RecordLine(const std::string& line) {
    if (IsRecording()) {
        watch->TakeOutput();
        watch->lines += line + "\n";
    }
}

} // namespace doubles
