#include "desktop/Reach.h"

#include "desktop/KeyPlaces.h"

#include <QObject>
#include <QString>
#include <QWinEventNotifier>
#include <utility>
#include <windows.h>

namespace Desktop {

namespace {

constexpr std::uint32_t extendedBit = 0x100;
// Of these the system says otherwise than the keyboard whether they are extended.
constexpr std::uint32_t rightShift = 0x36;
constexpr std::uint32_t pausePlace = 0x45;
constexpr std::uint32_t pauseCode = 19;

class EventWakeUp final : public WakeUp {
public:
    explicit EventWakeUp(std::function<void()> work)
        : event_(CreateEventW(nullptr, FALSE, FALSE, nullptr)), notifier_(event_) {
        QObject::connect(&notifier_, &QWinEventNotifier::activated, &notifier_, std::move(work));
    }
    ~EventWakeUp() override {
        notifier_.setEnabled(false);
        CloseHandle(event_);
    }
    EventWakeUp(const EventWakeUp&) = delete;
    EventWakeUp& operator=(const EventWakeUp&) = delete;

    void signal() noexcept override { SetEvent(event_); }

private:
    HANDLE event_;
    QWinEventNotifier notifier_;
};

// The low-level hook of the system. There is one, whose listener is told on the thread that set it.
class LowLevelHook final : public Gui::KeyboardHookProxy {
public:
    explicit LowLevelHook(GlobalKey listener) { listener_ = std::move(listener); }
    ~LowLevelHook() override { setActive(false); }
    LowLevelHook(const LowLevelHook&) = delete;
    LowLevelHook& operator=(const LowLevelHook&) = delete;

    std::string obstacle() const override { return {}; }
    void setActive(bool on) override {
        if (on && hook_ == nullptr) {
            hook_ = SetWindowsHookExW(WH_KEYBOARD_LL, &LowLevelHook::pressed, GetModuleHandleW(nullptr), 0);
        } else if (!on && hook_ != nullptr) {
            UnhookWindowsHookEx(std::exchange(hook_, nullptr));
        }
    }

private:
    static LRESULT CALLBACK pressed(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HC_ACTION && listener_) {
            const auto& key = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(lParam);
            const bool extended = (key.flags & LLKHF_EXTENDED) != 0;
            listener_(key.scanCode | (extended ? extendedBit : 0), wParam == WM_KEYDOWN || wParam == WM_SYSKEYDOWN);
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline GlobalKey listener_;
    HHOOK hook_ = nullptr;
};

} // namespace

bool canOpenWindows() {
    // A service has no screen.
    USEROBJECTFLAGS flags{};
    return GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr) == 0 ||
           (flags.dwFlags & WSF_VISIBLE) != 0;
}

// Hidden, not given back: what is printed has to go somewhere.
void hideOwnConsole() {
    DWORD processes[2];
    if (GetConsoleProcessList(processes, 2) == 1) {
        ShowWindow(GetConsoleWindow(), SW_HIDE);
    }
}

std::uint32_t codeOfScanCode(std::uint32_t nativeScanCode) {
    const std::uint32_t place = nativeScanCode & 0x7F;
    const bool extended = (nativeScanCode & extendedBit) != 0;
    if (place == pausePlace && !extended) {
        return pauseCode;
    }
    return codeOfPlace(place, extended && place != rightShift);
}

std::map<std::uint32_t, std::string> keyLegends() {
    std::map<std::uint32_t, std::string> legends;
    constexpr UINT lastLetterRow = 0x35;
    for (UINT scan = 2; scan <= lastLetterRow; ++scan) {
        const UINT character = MapVirtualKeyW(MapVirtualKeyW(scan, MAPVK_VSC_TO_VK), MAPVK_VK_TO_CHAR) & 0xFFFF;
        if (const std::uint32_t code = codeOfPlace(scan, false); code != 0 && character > ' ') {
            legends[code] = QString(QChar(static_cast<ushort>(character))).toUpper().toStdString();
        }
    }
    return legends;
}

std::unique_ptr<WakeUp> makeWakeUp(std::function<void()> work) {
    return std::make_unique<EventWakeUp>(std::move(work));
}

std::unique_ptr<Gui::KeyboardHookProxy> makeKeyboardHook(GlobalKey listener) {
    return std::make_unique<LowLevelHook>(std::move(listener));
}

std::unique_ptr<FocusWatch> watchFocus(std::function<void(bool)>) {
    return nullptr;
}

} // namespace Desktop
