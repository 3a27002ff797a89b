// Asks an X window to close, as a window manager's close button does: it sends the window the
// WM_DELETE_WINDOW message of the WM_PROTOCOLS. Xvfb runs no window manager to do it.
//   x_close_window <window id>
#include <X11/Xlib.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: x_close_window <window id>\n");
        return 2;
    }
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::fprintf(stderr, "x_close_window: cannot open the display\n");
        return 1;
    }
    XEvent message{};
    message.xclient.type = ClientMessage;
    message.xclient.window = std::strtoul(argv[1], nullptr, 0);
    message.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    message.xclient.format = 32;
    message.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    message.xclient.data.l[1] = CurrentTime;
    const Status sent = XSendEvent(display, message.xclient.window, False, NoEventMask, &message);
    XSync(display, False);
    XCloseDisplay(display);
    return sent != 0 ? 0 : 1;
}
