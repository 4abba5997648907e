// What of the desktop differs between the systems.
#pragma once

#include "gui/GuiParts.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace Desktop {

// True when the toolkit can open a window: it ends the program where it cannot.
[[nodiscard]] bool canOpenWindows();

// Hides a text window that the system has opened for this program alone, as it does when the program is started by
// mouse.
void hideOwnConsole();

// The key code (class Key) of the place of a native scan code on a US board; 0: none that is known.
[[nodiscard]] std::uint32_t codeOfScanCode(std::uint32_t nativeScanCode);

// What the live layout types on the keys, by key code; empty where the system does not say.
[[nodiscard]] std::map<std::uint32_t, std::string> keyLegends();

// Wakes the thread that made it: `work` is called there some time after each signal(). signal() neither blocks nor
// allocates. [any]
class WakeUp {
public:
    virtual ~WakeUp() = default;
    virtual void signal() noexcept = 0;
};
[[nodiscard]] std::unique_ptr<WakeUp> makeWakeUp(std::function<void()> work);

// Keys of the whole system, by scan code; called on the thread of the window.
using GlobalKey = std::function<void(std::uint32_t nativeScanCode, bool down)>;
[[nodiscard]] std::unique_ptr<Gui::KeyboardHookProxy> makeKeyboardHook(GlobalKey listener);

// While it lives, `listener` is told at once when the keyboard leaves the windows of this program and when it comes
// back, on the thread of the window; null where the toolkit says so as soon itself.
class FocusWatch {
public:
    virtual ~FocusWatch() = default;
};
[[nodiscard]] std::unique_ptr<FocusWatch> watchFocus(std::function<void(bool isHere)> listener);

} // namespace Desktop
