// What a viewer sees where boxes cannot be shown.
#include "WaylandNotice.h"

#include <gtk/gtk.h>

static void Show() {
    GtkWidget* box = gtk_message_dialog_new(nullptr, GTK_DIALOG_MODAL, GTK_MESSAGE_ERROR,
                                            GTK_BUTTONS_CLOSE, "Xwayland is missing");
    gtk_message_dialog_format_secondary_text(
        GTK_MESSAGE_DIALOG(box),
        "Only Wayland is here. The X display that is needed comes with Xwayland.");
    gtk_window_set_title(GTK_WINDOW(box), "Xwayland is missing");
    gtk_dialog_run(GTK_DIALOG(box));
    gtk_widget_destroy(box);
    while (gtk_events_pending() != FALSE) {
        gtk_main_iteration();
    }
}

bool TellOfMissingX() {
    gdk_set_allowed_backends("wayland");
    const bool answers = gtk_init_check(nullptr, nullptr) != FALSE;
    if (answers) {
        Show();
        gdk_display_close(gdk_display_get_default());
    }
    gdk_set_allowed_backends("x11");
    return answers;
}
