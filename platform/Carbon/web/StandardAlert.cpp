// Alert boxes as dialogs of the page.
#include <Carbon/Carbon.h>

#include "AlertText.h"

#include <memory>
#include <string>

extern "C" {

/// In alert.js: shows a box in the page until it is answered, and returns the item hit. Texts are
/// UTF-8; @p cancelText null: no such button. The program sleeps meanwhile.
int SkovraAlertRun(const char* error, const char* explanation, const char* defaultText,
                   const char* cancelText, int defaultItem, int cancelItem);
}

/// A box that has not been shown yet.
struct OpaqueDialogPtr {
    std::string error;
    std::string explanation;
    std::string defaultText;
    std::string cancelText; // empty: no such button
    int defaultItem;
    int cancelItem;
};

extern "C" {

OSStatus CreateStandardAlert(AlertType, CFStringRef error, CFStringRef explanation,
                             const AlertStdCFStringAlertParamRec* parameters, DialogRef* alert) {
    auto box = std::make_unique<OpaqueDialogPtr>(OpaqueDialogPtr{
        Utf8(error), Utf8(explanation), "OK", {}, kAlertStdAlertOKButton, kAlertStdAlertOKButton});
    if (parameters != nullptr) {
        box->defaultText = Utf8(parameters->defaultText);
        if (parameters->cancelText != nullptr) {
            box->cancelText = Utf8(parameters->cancelText);
        }
        box->defaultItem = parameters->defaultButton;
        box->cancelItem = parameters->cancelButton;
    }
    *alert = box.release();
    return noErr;
}

OSStatus RunStandardAlert(DialogRef alert, ModalFilterUPP, DialogItemIndex* itemHit) {
    *itemHit = 0;
    if (alert == nullptr) {
        return invalidAlert;
    }
    const std::unique_ptr<OpaqueDialogPtr> shown(alert);
    const char* cancelText = shown->cancelText.empty() ? nullptr : shown->cancelText.c_str();
    *itemHit = static_cast<DialogItemIndex>(
        SkovraAlertRun(shown->error.c_str(), shown->explanation.c_str(), shown->defaultText.c_str(),
                       cancelText, shown->defaultItem, shown->cancelItem));
    return noErr;
}
}
