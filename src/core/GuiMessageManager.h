// The proxy of one part of the user interface: its messages arrive through a window.
#pragma once

#include <cstdint>

namespace Backend {

class GuiMessageManager {
public:
    virtual ~GuiMessageManager() = default;

    // True for the ids of this manager.
    [[nodiscard]] virtual bool wantMessage(std::uint32_t id) const = 0;
    // Runs a message that wantMessage wants. [gui]
    virtual void handleMessage(std::uint32_t id, std::uintptr_t wParam, std::intptr_t lParam) = 0;
};

} // namespace Backend
