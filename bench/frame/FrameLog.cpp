// Preloaded into a program with boxes and a GLUT window: answers the boxes as soon as they can be
// seen, and writes down when the program reached what, in the file that FRAME_LOG names.
//
// A line each: a name, the time since FRAME_LOG_START (in s since the epoch) and the processor time
// of the whole process, both in ms. The frames are numbered from 1.
#include <GL/glx.h>
#include <gtk/gtk.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include <ctime>
#include <dlfcn.h>

namespace {

double Milliseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return 1e3 * static_cast<double>(now.tv_sec) + 1e-6 * static_cast<double>(now.tv_nsec);
}

std::FILE* Log() {
    static std::FILE* const log = [] {
        const char* path = std::getenv("FRAME_LOG");
        std::FILE* opened = path != nullptr ? std::fopen(path, "w") : nullptr;
        if (opened == nullptr) {
            std::perror("FRAME_LOG");
            std::_Exit(2);
        }
        std::setvbuf(opened, nullptr, _IOFBF, 1 << 20); // a whole show: written at its end
        return opened;
    }();
    return log;
}

void Reached(const char* name) {
    static const double start = [] {
        const char* text = std::getenv("FRAME_LOG_START");
        return text != nullptr ? 1e3 * std::strtod(text, nullptr) : 0.0;
    }();
    std::fprintf(Log(), "%s %.3f %.3f\n", name, Milliseconds(CLOCK_REALTIME) - start,
                 Milliseconds(CLOCK_PROCESS_CPUTIME_ID));
}

template <typename Function>
Function* Real(const char* name) {
    auto* const found = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
    if (found == nullptr) {
        std::fprintf(stderr, "There is no %s here.\n", name);
        std::_Exit(2);
    }
    return found;
}

/// Once the box has been drawn.
gboolean Answer(gpointer box) {
    gtk_dialog_response(GTK_DIALOG(box), GTK_RESPONSE_CANCEL);
    return G_SOURCE_REMOVE;
}

gboolean AnswerSoon(GtkWidget* box, cairo_t* /*drawing*/, gpointer /*data*/) {
    g_signal_handlers_disconnect_by_func(box, reinterpret_cast<gpointer>(AnswerSoon), nullptr);
    g_idle_add(Answer, box);
    return FALSE;
}

struct Loading {
    Loading() { Reached("loaded"); }
} const loading;

} // namespace

extern "C" {

gint gtk_dialog_run(GtkDialog* box) {
    static auto* const run = Real<gint(GtkDialog*)>("gtk_dialog_run");
    g_signal_connect_after(box, "draw", G_CALLBACK(AnswerSoon), nullptr);
    const gint answer = run(box);
    Reached("box");
    return answer;
}

void glutInit(int* argc, char** argv) {
    static auto* const init = Real<void(int*, char**)>("glutInit");
    Reached("glutInit");
    init(argc, argv);
    Reached("initialised");
}

void glutMainLoop() {
    static auto* const loop = Real<void()>("glutMainLoop");
    Reached("window");
    loop();
}

void glClear(GLbitfield mask) {
    static auto* const clear = Real<void(GLbitfield)>("glClear");
    static bool first = true;
    if (first) {
        Reached("loader");
        first = false;
    }
    clear(mask);
}

void glXSwapBuffers(Display* display, GLXDrawable drawable) {
    static auto* const swap = Real<void(Display*, GLXDrawable)>("glXSwapBuffers");
    static int frame = 0;
    swap(display, drawable);
    ++frame;
    Reached(("frame" + std::to_string(frame)).c_str());
}
}
