// Standard alert boxes and the mouse cursor, under Carbon's names.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

using OSStatus = int;
using AlertType = short;
using DialogItemIndex = short;
using DialogRef = struct OpaqueDialogPtr*;
using ModalFilterUPP = unsigned char (*)(DialogRef, struct EventRecord*, DialogItemIndex*);

inline constexpr OSStatus noErr = 0;
inline constexpr AlertType kAlertStopAlert = 0;
inline constexpr unsigned int kStdCFStringAlertVersionOne = 1;
inline constexpr short kAlertStdAlertOKButton = 1;
inline constexpr short kAlertStdAlertCancelButton = 2;
inline constexpr unsigned short kWindowDefaultPosition = 0;

/// How an alert differs from a single OK button.
struct AlertStdCFStringAlertParamRec {
    unsigned int version;    ///< kStdCFStringAlertVersionOne
    Boolean movable;         ///< the viewer may move the box
    Boolean helpButton;      ///< not supported
    CFStringRef defaultText; ///< caption of the OK button
    CFStringRef cancelText;  ///< caption of the cancel button; null: none
    CFStringRef otherText;   ///< not supported; null
    short defaultButton;     ///< the button that Return presses
    short cancelButton;      ///< the button that Escape presses
    unsigned short position; ///< kWindowDefaultPosition
    unsigned int flags;      ///< 0
};

extern "C" {

/// Makes a modal alert: @p error in bold, @p explanation below it. @p parameters null: one OK
/// button. RunStandardAlert frees @p alert. Main thread only.
/// Anything but noErr, with @p alert null: there is no display to show it on.
OSStatus CreateStandardAlert(AlertType type, CFStringRef error, CFStringRef explanation,
                             const AlertStdCFStringAlertParamRec* parameters, DialogRef* alert);

/// Shows @p alert until the viewer answers, frees it, and stores the button in @p itemHit. @p
/// filter: null. Anything but noErr, with @p itemHit 0: @p alert was null. Main thread only.
OSStatus RunStandardAlert(DialogRef alert, ModalFilterUPP filter, DialogItemIndex* itemHit);

/// Both do nothing while the program has no window.
OSStatus HideCursor();
OSStatus ShowCursor();
}
