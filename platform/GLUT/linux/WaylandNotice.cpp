#include "WaylandNotice.h"

#include <gtk/gtk.h>

#include <cerrno>

void ReportMissingX() {
    gdk_set_allowed_backends("wayland");
    g_unsetenv("GDK_BACKEND"); // it would overrule that
    gtk_disable_setlocale();   // the program's output must not depend on the locale
    if (g_get_prgname() == nullptr) {
        g_set_prgname(program_invocation_short_name); // what the desktop calls the program
    }
    if (gtk_init_check(nullptr, nullptr) == FALSE) {
        return;
    }
    GtkWidget* box = gtk_message_dialog_new(nullptr, GTK_DIALOG_MODAL, GTK_MESSAGE_ERROR,
                                            GTK_BUTTONS_CLOSE, "No X display answers");
    gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(box),
                                             "On Wayland it comes with Xwayland.");
    gtk_window_set_title(GTK_WINDOW(box), "No X display");
    gtk_dialog_run(GTK_DIALOG(box));
    gtk_widget_destroy(box);
}
