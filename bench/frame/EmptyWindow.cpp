// The least that a program with three boxes and a GLUT window can do, written straight on GTK and
// GLUT: what the show's start is measured against.
#include <GL/freeglut.h>
#include <gtk/gtk.h>

#include <cstdlib>

static void Ask(const char* text, bool isQuestion) {
    GtkWidget* box =
        gtk_message_dialog_new(nullptr, GTK_DIALOG_MODAL, GTK_MESSAGE_ERROR,
                               isQuestion ? GTK_BUTTONS_YES_NO : GTK_BUTTONS_OK, "%s", "Empty");
    gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(box), "%s", text);
    gtk_window_set_title(GTK_WINDOW(box), "Empty");
    gtk_dialog_run(GTK_DIALOG(box));
    gtk_widget_destroy(box);
    while (gtk_events_pending() != FALSE) {
        gtk_main_iteration();
    }
}

static void Draw() {
    glClear(GL_COLOR_BUFFER_BIT);
    glutSwapBuffers();
    std::exit(0);
}

int main(int argc, char** argv) {
    glutInit(&argc, argv);
    gdk_set_allowed_backends("x11");
    gtk_init(nullptr, nullptr);
    Ask("A notice.", false);
    Ask("Does one button answer no?", true);
    Ask("A longer notice, of two lines in the box or nearly so.", false);
    glutInitDisplayMode(GLUT_RGBA | GLUT_DOUBLE | GLUT_DEPTH);
    glutInitWindowSize(1024, 768);
    glutInitWindowPosition(200, 200);
    glutCreateWindow("Empty");
    glutDisplayFunc(Draw);
    glutMainLoop();
    return 0;
}
