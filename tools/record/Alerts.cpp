// Alert boxes that are not shown and are answered No, and a cursor that does not exist.
#include <Carbon/Carbon.h>

#include <memory>

/// The button that is pressed.
struct OpaqueDialogPtr {
    DialogItemIndex answer;
};

extern "C" {

OSStatus CreateStandardAlert(AlertType, CFStringRef, CFStringRef,
                             const AlertStdCFStringAlertParamRec* parameters, DialogRef* alert) {
    *alert = new OpaqueDialogPtr{parameters == nullptr ? kAlertStdAlertOKButton
                                                       : parameters->cancelButton};
    return noErr;
}

OSStatus RunStandardAlert(DialogRef alert, ModalFilterUPP, DialogItemIndex* itemHit) {
    const std::unique_ptr<OpaqueDialogPtr> answered(alert);
    *itemHit = answered->answer;
    return noErr;
}

OSStatus HideCursor() {
    return noErr;
}

OSStatus ShowCursor() {
    return noErr;
}
}
