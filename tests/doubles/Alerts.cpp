#include "Alerts.h"

#include "Bundle.h"
#include "Effects.h"

#include <string>

struct OpaqueDialogPtr {
    bool question;
};

namespace doubles {

AlertScript alerts;

namespace {

constexpr OSStatus noDisplay = -1;

OpaqueDialogPtr dialog;
DialogRef shown = nullptr; // &dialog between its making and its disposal

Word Type(AlertType type) {
    return {type == kAlertStopAlert ? "kAlertStopAlert" : std::to_string(type)};
}

Word Parameters(const AlertStdCFStringAlertParamRec* parameters) {
    if (parameters == nullptr) {
        return {"null"};
    }
    return {"{" + std::to_string(parameters->version) + ", " + Text(parameters->movable != 0) +
            ", " + Text(parameters->helpButton != 0) + ", " + Describe(parameters->defaultText) +
            ", " + Describe(parameters->cancelText) + ", " + Describe(parameters->otherText) +
            ", " + std::to_string(parameters->defaultButton) + ", " +
            std::to_string(parameters->cancelButton) + ", " + std::to_string(parameters->position) +
            ", " + std::to_string(parameters->flags) + "}"};
}

} // namespace

} // namespace doubles

OSStatus CreateStandardAlert(AlertType type, CFStringRef error, CFStringRef explanation,
                             const AlertStdCFStringAlertParamRec* parameters, DialogRef* alert) {
    using namespace doubles;
    Record("CreateStandardAlert", Type(type), Word{Describe(error)}, Word{Describe(explanation)},
           Parameters(parameters));
    dialog.question = parameters != nullptr;
    shown = alerts.canBeShown ? &dialog : nullptr;
    *alert = shown;
    return alerts.canBeShown ? noErr : noDisplay;
}

OSStatus RunStandardAlert(DialogRef alert, ModalFilterUPP filter, DialogItemIndex* itemHit) {
    using namespace doubles;
    Record("RunStandardAlert", Word{alert == nullptr ? "null" : "alert"},
           Word{filter == nullptr ? "null" : "filter"});
    if (alert == nullptr || alert != shown) {
        return noDisplay; // the item hit stays as it was, so that nobody counts on it
    }
    shown = nullptr;
    *itemHit = alert->question ? alerts.answer : kAlertStdAlertOKButton;
    return noErr;
}

OSStatus HideCursor() {
    doubles::Record("HideCursor");
    return noErr;
}

OSStatus ShowCursor() {
    doubles::Record("ShowCursor");
    return noErr;
}
