// Writes down the texts of every box that the show asks its viewer to answer, in the file that
// BOX_LOG names, if any: a line each of its main text, its explanation and its buttons' captions.
#include <gtk/gtk.h>

#include <cstdio>
#include <cstdlib>

// The names that the linker's --wrap gives to gtk_dialog_run and to its stand-in.
extern "C" gint __real_gtk_dialog_run(GtkDialog* box);
extern "C" gint __wrap_gtk_dialog_run(GtkDialog* box);

namespace {

void PrintText(std::FILE* log, GtkDialog* box, const char* property) {
    char* text = nullptr;
    g_object_get(box, property, &text, nullptr);
    std::fprintf(log, "%s\n", text != nullptr ? text : "");
    g_free(text);
}

void PrintCaption(GtkWidget* widget, void* log) {
    if (GTK_IS_BUTTON(widget) != FALSE) {
        std::fprintf(static_cast<std::FILE*>(log), "[%s]",
                     gtk_button_get_label(GTK_BUTTON(widget)));
    } else if (GTK_IS_CONTAINER(widget) != FALSE) {
        gtk_container_foreach(GTK_CONTAINER(widget), PrintCaption, log);
    }
}

} // namespace

gint __wrap_gtk_dialog_run(GtkDialog* box) {
    const char* path = std::getenv("BOX_LOG");
    if (std::FILE* log = path != nullptr ? std::fopen(path, "a") : nullptr; log != nullptr) {
        PrintText(log, box, "text");
        PrintText(log, box, "secondary-text");
        PrintCaption(GTK_WIDGET(box), log);
        std::fputc('\n', log);
        std::fclose(log);
    }
    return __real_gtk_dialog_run(box);
}
