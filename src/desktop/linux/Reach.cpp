#include "desktop/Reach.h"

#include "desktop/KeyPlaces.h"
#include "desktop/linux/XDisplay.h"

#include <QGuiApplication>
#include <QSocketNotifier>
#include <cstdlib>
#include <string_view>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace Desktop {

namespace {

// Codes of the kernel behind those of the first set, in ascending order.
constexpr std::pair<std::uint32_t, std::uint8_t> furtherKeys[]{
    {96, 226}, {97, 225}, {98, 111}, {99, 5},   {100, 165}, {102, 36}, {103, 38}, {104, 33}, {105, 37}, {106, 39},
    {107, 35}, {108, 40}, {109, 34}, {110, 45}, {111, 46},  {119, 19}, {125, 91}, {126, 92}, {127, 93}};
constexpr std::uint32_t offsetOfX = 8; // X and Wayland count from there

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

class EventWakeUp final : public WakeUp {
public:
    explicit EventWakeUp(std::function<void()> work)
        : event_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)), notifier_(event_, QSocketNotifier::Read) {
        QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this, work = std::move(work)] {
            eventfd_t count = 0;
            static_cast<void>(eventfd_read(event_, &count));
            work();
        });
    }
    ~EventWakeUp() override {
        notifier_.setEnabled(false);
        close(event_);
    }
    void signal() noexcept override { static_cast<void>(eventfd_write(event_, 1)); }

private:
    int event_;
    QSocketNotifier notifier_;
};

} // namespace

bool canOpenWindows() {
    if (isSet("QT_QPA_PLATFORM")) {
        return true; // somebody knows better
    }
    return isSet("WAYLAND_DISPLAY") || (isSet("DISPLAY") && XDisplay().isOpen());
}

void hideOwnConsole() {} // the system opens none

std::uint32_t codeOfScanCode(std::uint32_t nativeScanCode) {
    if (nativeScanCode <= offsetOfX) {
        return 0;
    }
    const std::uint32_t key = nativeScanCode - offsetOfX;
    for (const auto& [known, code] : furtherKeys) {
        if (known == key) {
            return code;
        }
    }
    return codeOfPlace(key, false);
}

std::map<std::uint32_t, std::string> keyLegends() {
    std::map<std::uint32_t, std::string> legends;
    if (QGuiApplication::platformName() != "xcb") {
        return legends;
    }
    XDisplay display;
    constexpr std::uint32_t lastLetterRow = 53; // the key with the slash
    for (std::uint32_t key = 2; display.isOpen() && key <= lastLetterRow; ++key) {
        const std::string text = display.textOnKey(key + offsetOfX);
        if (const std::uint32_t code = codeOfPlace(key, false); code != 0 && !text.empty()) {
            legends[code] = text;
        }
    }
    return legends;
}

std::unique_ptr<WakeUp> makeWakeUp(std::function<void()> work) {
    return std::make_unique<EventWakeUp>(std::move(work));
}

} // namespace Desktop
