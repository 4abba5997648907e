// The user interface's counterpart of MessageManagerMaster: its messages come through windows.
#pragma once

#include "platform/Threads.h"
#include "platform/WindowMessages.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace Backend {

class GuiMessageManager;

class GuiMessageManagerMaster final {
public:
    // Records the thread of the user interface. [gui] when it starts
    void setThreadId(Platform::ThreadId thread) noexcept { threadId_ = thread; }
    // Appends to the list that is asked in this order. The manager stays the caller's. [gui]
    void addMessageManager(GuiMessageManager& manager);

    // One try, nothing reported; the result is only for posters of heap copies, which free what was refused. [any]
    bool postMessage(Platform::WindowHandle window, std::uint32_t id, std::uintptr_t wParam = 0,
                     std::intptr_t lParam = 0) noexcept;

    // True when any manager wants the id. [gui]
    [[nodiscard]] bool wantMessage(std::uint32_t id) const;
    // Gives the message to the first manager that wants it. Always 0, the answer to the window. [gui]
    std::intptr_t handleMessage(Platform::WindowHandle window, std::uint32_t id, std::uintptr_t wParam,
                                std::intptr_t lParam);

    [[nodiscard]] bool currentThreadIsManagerThread() const noexcept; // [any]

private:
    [[nodiscard]] GuiMessageManager* findManager(std::uint32_t id) const;

    std::atomic<Platform::ThreadId> threadId_{0};
    std::vector<GuiMessageManager*> managers_;
};

} // namespace Backend
