// Alert boxes with GTK, in this process, on the X server that the show's window will be on.
#include <Carbon/Carbon.h>

#include "AlertText.h"

#include <X11/Xlib.h>
#include <gtk/gtk.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <string>

/// A box that has not been shown yet; its buttons answer with their item numbers.
struct OpaqueDialogPtr {
    GtkWidget* box;
    DialogItemIndex cancelItem;
};

namespace {

constexpr OSStatus noDisplay = -1;

/// GTK replaces the handlers of X errors and of SIGPIPE for the whole process, permanently; errors
/// on GLUT's own connection would then go unnoticed.
class KeptHandlers {
public:
    KeptHandlers() : onError(XSetErrorHandler(nullptr)), onIoError(XSetIOErrorHandler(nullptr)) {
        XSetErrorHandler(onError);
        XSetIOErrorHandler(onIoError);
        sigaction(SIGPIPE, nullptr, &onPipe);
    }
    ~KeptHandlers() {
        XSetErrorHandler(onError);
        XSetIOErrorHandler(onIoError);
        sigaction(SIGPIPE, &onPipe, nullptr);
    }
    KeptHandlers(const KeptHandlers&) = delete;
    KeptHandlers& operator=(const KeptHandlers&) = delete;

private:
    XErrorHandler onError;
    XIOErrorHandler onIoError;
    struct sigaction onPipe{};
};

bool Started() {
    static const bool prepared = [] {
        // freeglut supports X11 only: box and window on one server.
        gdk_set_allowed_backends("x11");
        g_unsetenv("GDK_BACKEND"); // it would overrule that
        gtk_disable_setlocale();   // a decimal comma would change what printf and strtod do
        if (g_get_prgname() == nullptr) {
            g_set_prgname(program_invocation_short_name); // what the desktop calls the program
        }
        return true;
    }();
    // If the display is lost meanwhile, GTK ends the process at once, without flushing output.
    std::fflush(stdout);
    return prepared && gtk_init_check(nullptr, nullptr) != FALSE;
}

void AddButton(GtkDialog* box, const std::string& caption, DialogItemIndex item) {
    // Not gtk_dialog_add_button: it would take an underscore in the caption for a mnemonic.
    GtkWidget* button = gtk_button_new_with_label(caption.c_str());
    gtk_widget_set_can_default(button, TRUE);
    gtk_widget_show(button);
    gtk_dialog_add_action_widget(box, button, item);
}

void AddButtons(GtkDialog* box, const AlertStdCFStringAlertParamRec* parameters) {
    if (parameters == nullptr) {
        AddButton(box, "OK", kAlertStdAlertOKButton);
        gtk_dialog_set_default_response(box, kAlertStdAlertOKButton);
        return;
    }
    if (parameters->cancelText != nullptr) {
        AddButton(box, Utf8(parameters->cancelText), kAlertStdAlertCancelButton);
    }
    AddButton(box, Utf8(parameters->defaultText), kAlertStdAlertOKButton);
    gtk_dialog_set_default_response(box, parameters->defaultButton);
}

void AddStopIcon(GtkMessageDialog* box) {
    GtkWidget* icon = gtk_image_new_from_icon_name("dialog-error", GTK_ICON_SIZE_DIALOG);
    gtk_widget_set_valign(icon, GTK_ALIGN_START);
    gtk_widget_show(icon);
    // Deprecated, but GTK 3 has no other way to set the icon.
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    gtk_message_dialog_set_image(box, icon);
    G_GNUC_END_IGNORE_DEPRECATIONS
}

/// Waits until the X server has removed the box from the screen.
void Drain() {
    while (gtk_events_pending() != FALSE) {
        gtk_main_iteration();
    }
    gdk_display_sync(gdk_display_get_default());
}

} // namespace

extern "C" {

OSStatus CreateStandardAlert(AlertType, CFStringRef error, CFStringRef explanation,
                             const AlertStdCFStringAlertParamRec* parameters, DialogRef* alert) {
    *alert = nullptr;
    const KeptHandlers handlers;
    if (!Started()) {
        return noDisplay;
    }
    const auto mainText = Utf8(error);
    GtkWidget* box = gtk_message_dialog_new(nullptr, GTK_DIALOG_MODAL, GTK_MESSAGE_ERROR,
                                            GTK_BUTTONS_NONE, "%s", mainText.c_str());
    gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(box), "%s",
                                             Utf8(explanation).c_str());
    gtk_window_set_title(GTK_WINDOW(box), mainText.c_str());
    gtk_window_set_position(GTK_WINDOW(box), GTK_WIN_POS_CENTER);
    AddStopIcon(GTK_MESSAGE_DIALOG(box));
    AddButtons(GTK_DIALOG(box), parameters);
    *alert = new OpaqueDialogPtr{box, parameters == nullptr ? kAlertStdAlertOKButton
                                                            : parameters->cancelButton};
    return noErr;
}

OSStatus RunStandardAlert(DialogRef alert, ModalFilterUPP, DialogItemIndex* itemHit) {
    *itemHit = 0;
    if (alert == nullptr) {
        return invalidAlert;
    }
    const std::unique_ptr<OpaqueDialogPtr> shown(alert);
    const KeptHandlers handlers;
    const int response = gtk_dialog_run(GTK_DIALOG(shown->box));
    gtk_widget_destroy(shown->box);
    Drain();
    // GTK's own answers, all negative: Escape, or closed by the window manager.
    *itemHit = response > 0 ? static_cast<DialogItemIndex>(response) : shown->cancelItem;
    return noErr;
}
}
