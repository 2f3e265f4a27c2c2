#include "ScreenProbe.h"

#include "ScreenMode.h"

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>
#include <X11/extensions/xf86vmode.h>

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace {

/// Xlib ends the process on an error unless told otherwise; here an error is an answer.
class ErrorsIgnored {
public:
    ErrorsIgnored() : before(XSetErrorHandler([](Display*, XErrorEvent*) { return 0; })) {}
    ~ErrorsIgnored() { XSetErrorHandler(before); }
    ErrorsIgnored(const ErrorsIgnored&) = delete;
    ErrorsIgnored& operator=(const ErrorsIgnored&) = delete;

private:
    XErrorHandler before;
};

template <typename Line>
ScreenMode ModeOf(unsigned int clock, const Line& line) {
    return {clock,         line.hdisplay,   line.hsyncstart, line.hsyncend, line.htotal,
            line.vdisplay, line.vsyncstart, line.vsyncend,   line.vtotal,   line.flags};
}

ScreenMode ModeOf(const XRRModeInfo& info) {
    return {static_cast<unsigned int>(info.dotClock / 1000),
            info.width,
            info.hSyncStart,
            info.hSyncEnd,
            info.hTotal,
            info.height,
            info.vSyncStart,
            info.vSyncEnd,
            info.vTotal,
            static_cast<unsigned int>(info.modeFlags)};
}

/// RandR 1.5 or later: there are no monitors before.
bool HasMonitors(Display* display) {
    int event = 0;
    int error = 0;
    int major = 0;
    int minor = 0;
    return XRRQueryExtension(display, &event, &error) != 0 &&
           XRRQueryVersion(display, &major, &minor) != 0 && (major > 1 || minor >= 5);
}

bool HasOneMonitor(Display* display) {
    int count = 0;
    const std::unique_ptr<XRRMonitorInfo, decltype(&XRRFreeMonitors)> monitors(
        XRRGetMonitors(display, DefaultRootWindow(display), True, &count), XRRFreeMonitors);
    return monitors && count == 1;
}

bool HasOutputNamed(std::string_view beginning, Display* display, XRRScreenResources* resources) {
    const std::span outputs(resources->outputs, static_cast<std::size_t>(resources->noutput));
    return std::ranges::any_of(outputs, [&](RROutput each) {
        const std::unique_ptr<XRROutputInfo, decltype(&XRRFreeOutputInfo)> output(
            XRRGetOutputInfo(display, resources, each), XRRFreeOutputInfo);
        return output && std::string_view(output->name).starts_with(beginning);
    });
}

/// Xwayland switches no mode, but has compositors show a window as if it had: some never give that
/// window the keyboard focus, and some crash. From 23.1 on an extension identifies it; before
/// that the names of its outputs did, which are now those of the screens.
bool IsXwayland(Display* display) {
    int opcode = 0;
    int event = 0;
    int error = 0;
    if (XQueryExtension(display, "XWAYLAND", &opcode, &event, &error) != 0) {
        return true;
    }
    const std::unique_ptr<XRRScreenResources, decltype(&XRRFreeScreenResources)> resources(
        XRRGetScreenResourcesCurrent(display, DefaultRootWindow(display)), XRRFreeScreenResources);
    return resources && HasOutputNamed("XWAYLAND", display, resources.get());
}

/// The mode in use, if it is the only one and covers the whole screen, unrotated.
std::optional<ScreenMode> OnlyMode(Display* display, int width, int height) {
    const std::unique_ptr<XRRScreenResources, decltype(&XRRFreeScreenResources)> resources(
        XRRGetScreenResourcesCurrent(display, DefaultRootWindow(display)), XRRFreeScreenResources);
    if (!resources) {
        return std::nullopt;
    }
    RRMode used = 0;
    for (const RRCrtc each :
         std::span(resources->crtcs, static_cast<std::size_t>(resources->ncrtc))) {
        const std::unique_ptr<XRRCrtcInfo, decltype(&XRRFreeCrtcInfo)> crtc(
            XRRGetCrtcInfo(display, resources.get(), each), XRRFreeCrtcInfo);
        if (!crtc || crtc->mode == 0) {
            continue;
        }
        if (used != 0 || crtc->rotation != RR_Rotate_0 || crtc->x != 0 || crtc->y != 0 ||
            static_cast<int>(crtc->width) != width || static_cast<int>(crtc->height) != height) {
            return std::nullopt;
        }
        used = crtc->mode;
    }
    const std::span modes(resources->modes, static_cast<std::size_t>(resources->nmode));
    const auto found = std::ranges::find(modes, used, &XRRModeInfo::id);
    return found != modes.end() ? std::optional(ModeOf(*found)) : std::nullopt;
}

/// The mode that the mode-switching extension considers current. After a change by other means it
/// may be the previous one.
std::optional<ScreenMode> SwitchableMode(Display* display) {
    int clock = 0;
    XF86VidModeModeLine line{};
    if (XF86VidModeGetModeLine(display, DefaultScreen(display), &clock, &line) == 0) {
        return std::nullopt;
    }
    if (line.privsize > 0) {
        XFree(line.c_private);
    }
    return ModeOf(static_cast<unsigned int>(clock), line);
}

std::vector<ScreenMode> SwitchableModes(Display* display) {
    int count = 0;
    XF86VidModeModeInfo** lines = nullptr;
    std::vector<ScreenMode> modes;
    if (XF86VidModeGetAllModeLines(display, DefaultScreen(display), &count, &lines) != 0) {
        const std::unique_ptr<XF86VidModeModeInfo*, decltype(&XFree)> owned(lines, XFree);
        for (const auto* line : std::span(lines, static_cast<std::size_t>(count))) {
            modes.push_back(ModeOf(line->dotclock, *line));
        }
    }
    return modes;
}

bool CanSwitchModes(Display* display) {
    int event = 0;
    int error = 0;
    return ServerSwitchesModes(DisplayString(display)) &&
           XF86VidModeQueryExtension(display, &event, &error) != 0;
}

/// freeglut would wait forever for a pointer that another program has grabbed.
bool IsFreeToGrab(Display* display) {
    const Window root = DefaultRootWindow(display);
    const bool mouse = XGrabPointer(display, root, False, 0, GrabModeAsync, GrabModeAsync, 0, 0,
                                    CurrentTime) == GrabSuccess;
    const bool keyboard = XGrabKeyboard(display, root, False, GrabModeAsync, GrabModeAsync,
                                        CurrentTime) == GrabSuccess;
    XUngrabKeyboard(display, CurrentTime);
    XUngrabPointer(display, CurrentTime);
    XSync(display, False);
    return mouse && keyboard;
}

} // namespace

// DISPLAY names freeglut's server: glutInit sees to that.
ScreenProbe::ScreenProbe() : display(XOpenDisplay(nullptr)) {}

void ScreenProbe::Closer::operator()(Display* opened) const {
    XCloseDisplay(opened);
}

int ScreenProbe::Width() const {
    return display ? DisplayWidth(display.get(), DefaultScreen(display.get())) : 0;
}

int ScreenProbe::Height() const {
    return display ? DisplayHeight(display.get(), DefaultScreen(display.get())) : 0;
}

ScreenProbe::Position ScreenProbe::Pointer() const {
    Position position{0, 0};
    if (display) {
        Window root = 0;
        Window child = 0;
        Position inWindow{0, 0};
        unsigned int buttons = 0;
        XQueryPointer(display.get(), DefaultRootWindow(display.get()), &root, &child, &position.x,
                      &position.y, &inWindow.x, &inWindow.y, &buttons);
    }
    return position;
}

bool ScreenProbe::GameModeChangesNothing() const {
    if (!display) {
        return false;
    }
    const ErrorsIgnored errors;
    if (!CanSwitchModes(display.get()) || !HasMonitors(display.get()) ||
        !HasOneMonitor(display.get()) || IsXwayland(display.get())) {
        return false;
    }
    const auto used = OnlyMode(display.get(), Width(), Height());
    return used && used == SwitchableMode(display.get()) &&
           GameModeKeeps(*used, SwitchableModes(display.get())) && IsFreeToGrab(display.get());
}
