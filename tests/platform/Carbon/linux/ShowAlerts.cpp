// show-alerts BOX...: shows each box, "notice" or "question", one after the other, and prints a
// line about each: its kind, whether it could be made and run, the item hit, and 1.5. A "pause"
// among them stops there until the program is ended.
#include <Carbon/Carbon.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

/// A string that lives as long as the program.
CFStringRef MacRoman(const char* text) {
    static std::vector<std::unique_ptr<const void, decltype(&CFRelease)>> kept;
    auto* string = CFStringCreateWithCString(kCFAllocatorDefault, text, kCFStringEncodingMacRoman);
    kept.emplace_back(string, CFRelease);
    return string;
}

void Show(const std::string& kind) {
    const AlertStdCFStringAlertParamRec yesOrNo{kStdCFStringAlertVersionOne,
                                                true,
                                                false,
                                                MacRoman("Yes"),
                                                MacRoman("No"),
                                                nullptr,
                                                kAlertStdAlertOKButton,
                                                kAlertStdAlertCancelButton,
                                                kWindowDefaultPosition,
                                                0};
    DialogRef alert = nullptr;
    DialogItemIndex item = -1;
    const auto created =
        CreateStandardAlert(kAlertStopAlert, MacRoman("\"Skovra\" (1)"), MacRoman("Kj\xBFre?"),
                            kind == "question" ? &yesOrNo : nullptr, &alert);
    const auto run = RunStandardAlert(alert, nullptr, &item);
    std::printf("%s: created %s, run %s, item %d, %.1f\n", kind.c_str(),
                created == noErr ? "yes" : "no", run == noErr ? "yes" : "no", item, 1.5);
    std::fflush(stdout);
}

} // namespace

int main(int argumentCount, char** arguments) {
    for (int i = 1; i < argumentCount; ++i) {
        if (std::string(arguments[i]) == "pause") {
            pause();
        }
        Show(arguments[i]);
    }
    return 0;
}
