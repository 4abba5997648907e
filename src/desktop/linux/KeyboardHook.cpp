#include "desktop/Reach.h"
#include "desktop/linux/XDisplay.h"

#include <QGuiApplication>
#include <QSocketNotifier>
#include <utility>

namespace Desktop {

namespace {

// Raw key events of the X server: nothing is taken away from other programs.
class XKeyboardHook final : public Gui::KeyboardHookProxy {
public:
    explicit XKeyboardHook(GlobalKey listener) : listener_(std::move(listener)) {}

    std::string obstacle() const override {
        const QString platform = QGuiApplication::platformName();
        if (platform.startsWith("wayland")) {
            return "Wayland does not let a program see keys that are typed into another one.";
        }
        return platform == "xcb" ? "" : "This display does not say which keys are pressed elsewhere.";
    }

    void setActive(bool on) override {
        notifier_.reset();
        display_.reset();
        if (!on || !obstacle().empty()) {
            return;
        }
        display_ = std::make_unique<XDisplay>();
        if (!display_->isOpen() || !display_->watchKeys()) {
            display_.reset();
            return;
        }
        notifier_ = std::make_unique<QSocketNotifier>(display_->descriptor(), QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                         [this] { display_->readKeys(listener_); });
    }

private:
    GlobalKey listener_;
    std::unique_ptr<XDisplay> display_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace

std::unique_ptr<Gui::KeyboardHookProxy> makeKeyboardHook(GlobalKey listener) {
    return std::make_unique<XKeyboardHook>(std::move(listener));
}

} // namespace Desktop
