#include "desktop/Reach.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <utility>
#include <xcb/xcb.h>

namespace Desktop {

namespace {

// The toolkit waits 0.4 s for another of its windows to get the keyboard before it says that it has gone.
class XFocusWatch final : public FocusWatch, public QAbstractNativeEventFilter {
public:
    explicit XFocusWatch(std::function<void(bool)> listener) : listener_(std::move(listener)) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr*) override {
        if (type != "xcb_generic_event_t") {
            return false;
        }
        constexpr int sentByOthers = 0x80;
        const int kind = static_cast<const xcb_generic_event_t*>(message)->response_type & ~sentByOthers;
        if (kind == XCB_FOCUS_IN || kind == XCB_FOCUS_OUT) {
            const int detail = static_cast<const xcb_focus_in_event_t*>(message)->detail;
            // Those that only tell where the pointer is, or of a part of the same window, move no keyboard.
            if (detail != XCB_NOTIFY_DETAIL_POINTER && detail != XCB_NOTIFY_DETAIL_INFERIOR) {
                listener_(kind == XCB_FOCUS_IN);
            }
        }
        return false;
    }

private:
    std::function<void(bool)> listener_;
};

} // namespace

std::unique_ptr<FocusWatch> watchFocus(std::function<void(bool)> listener) {
    return std::make_unique<XFocusWatch>(std::move(listener));
}

} // namespace Desktop
