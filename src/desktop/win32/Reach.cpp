#include "desktop/Reach.h"

#include "desktop/KeyPlaces.h"

#include <QMetaObject>
#include <QObject>
#include <QString>
#include <atomic>
#include <utility>
#include <windows.h>

namespace Desktop {

namespace {

constexpr std::uint32_t extendedBit = 0x100;

// The window's endpoint is a window of the system: its messages come through the toolkit's own loop.
class NoWakeUp final : public WakeUp {
public:
    void signal() noexcept override {}
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
    return true;
}

std::uint32_t codeOfScanCode(std::uint32_t nativeScanCode) {
    return codeOfPlace(nativeScanCode & 0x7F, (nativeScanCode & extendedBit) != 0);
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

std::unique_ptr<WakeUp> makeWakeUp(std::function<void()>) {
    return std::make_unique<NoWakeUp>();
}

std::unique_ptr<Gui::KeyboardHookProxy> makeKeyboardHook(GlobalKey listener) {
    return std::make_unique<LowLevelHook>(std::move(listener));
}

} // namespace Desktop
