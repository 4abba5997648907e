#include "desktop/linux/XDisplay.h"

#include <QChar>
#include <QString>
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <array>

namespace Desktop {

struct XDisplay::Connection {
    Display* display = XOpenDisplay(nullptr);
    int extension = 0; // of XInput
    ~Connection() {
        if (display != nullptr) {
            XCloseDisplay(display);
        }
    }
};

XDisplay::XDisplay() : connection_(std::make_unique<Connection>()) {}
XDisplay::~XDisplay() = default;

bool XDisplay::isOpen() const {
    return connection_->display != nullptr;
}

std::string XDisplay::textOnKey(std::uint32_t keycode) const {
    const KeySym symbol = XkbKeycodeToKeysym(connection_->display, static_cast<KeyCode>(keycode), 0, 0);
    constexpr KeySym firstOfUnicode = 0x01000000;
    char32_t character = 0;
    if (symbol >= firstOfUnicode) {
        character = static_cast<char32_t>(symbol - firstOfUnicode);
    } else if ((symbol >= 0x20 && symbol < 0x7F) || (symbol >= 0xA0 && symbol <= 0xFF)) {
        character = static_cast<char32_t>(symbol); // these are Latin 1
    }
    return character > U' ' ? QString::fromUcs4(&character, 1).toUpper().toStdString() : std::string();
}

bool XDisplay::watchKeys() {
    int event = 0;
    int error = 0;
    int major = 2;
    int minor = 0;
    Display* const display = connection_->display;
    if (display == nullptr || !XQueryExtension(display, "XInputExtension", &connection_->extension, &event, &error) ||
        XIQueryVersion(display, &major, &minor) != Success) {
        return false;
    }
    std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits{};
    XISetMask(bits.data(), XI_RawKeyPress);
    XISetMask(bits.data(), XI_RawKeyRelease);
    XIEventMask mask{XIAllMasterDevices, static_cast<int>(bits.size()), bits.data()};
    XISelectEvents(display, DefaultRootWindow(display), &mask, 1);
    XFlush(display);
    return true;
}

int XDisplay::descriptor() const {
    return ConnectionNumber(connection_->display);
}

void XDisplay::readKeys(const std::function<void(std::uint32_t, bool)>& listener) {
    Display* const display = connection_->display;
    while (XPending(display) > 0) {
        XEvent event{};
        XNextEvent(display, &event);
        XGenericEventCookie& cookie = event.xcookie;
        if (cookie.type != GenericEvent || cookie.extension != connection_->extension ||
            !XGetEventData(display, &cookie)) {
            continue;
        }
        const auto& raw = *static_cast<const XIRawEvent*>(cookie.data);
        if (raw.evtype == XI_RawKeyPress || raw.evtype == XI_RawKeyRelease) {
            listener(static_cast<std::uint32_t>(raw.detail), raw.evtype == XI_RawKeyPress);
        }
        XFreeEventData(display, &cookie);
    }
}

} // namespace Desktop
