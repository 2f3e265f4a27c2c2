#include "AlertBox.h"

#include <Carbon/Carbon.h>

namespace engine {

namespace {

CFStringRef MakeString(const char* text) {
    return CFStringCreateWithCString(kCFAllocatorDefault, text, kCFStringEncodingMacRoman);
}

/// Stop icon also for notices. The item hit, or 0 when the box cannot be shown.
DialogItemIndex RunStopAlert(CFStringRef title, CFStringRef explanation,
                             const AlertStdCFStringAlertParamRec* parameters) {
    DialogRef alert = nullptr;
    DialogItemIndex itemHit = 0;
    CreateStandardAlert(kAlertStopAlert, title, explanation, parameters, &alert);
    RunStandardAlert(alert, nullptr, &itemHit);
    return itemHit;
}

} // namespace

void logMessageBox(const std::string& title, const std::string& message) {
    CFStringRef titleString = MakeString(title.c_str());
    CFStringRef messageString = MakeString(message.c_str());
    RunStopAlert(titleString, messageString, nullptr);
    CFRelease(titleString);
    CFRelease(messageString);
}

bool logQuestionBox(const std::string& title, const std::string& question) {
    CFStringRef yes = MakeString("Yes");
    CFStringRef no = MakeString("No");
    AlertStdCFStringAlertParamRec parameters;
    parameters.version = kStdCFStringAlertVersionOne;
    parameters.movable = true;
    parameters.helpButton = false;
    parameters.defaultText = yes;
    parameters.cancelText = no;
    parameters.otherText = nullptr;
    parameters.defaultButton = kAlertStdAlertOKButton;
    parameters.cancelButton = kAlertStdAlertCancelButton;
    parameters.position = kWindowDefaultPosition;
    parameters.flags = 0;

    CFStringRef titleString = MakeString(title.c_str());
    CFStringRef questionString = MakeString(question.c_str());
    const DialogItemIndex itemHit = RunStopAlert(titleString, questionString, &parameters);
    CFRelease(titleString);
    CFRelease(questionString);
    CFRelease(yes);
    CFRelease(no);
    return itemHit == kAlertStdAlertOKButton;
}

} // namespace engine
