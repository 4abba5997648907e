#include "core/GuiMessageManagerMaster.h"

#include "core/GuiMessageManager.h"

#include <algorithm>

namespace Backend {

void GuiMessageManagerMaster::addMessageManager(GuiMessageManager& manager) {
    managers_.push_back(&manager);
}

bool GuiMessageManagerMaster::postMessage(Platform::WindowHandle window, std::uint32_t id, std::uintptr_t wParam,
                                          std::intptr_t lParam) noexcept {
    return Platform::postWindowMessage(window, {id, wParam, lParam});
}

bool GuiMessageManagerMaster::wantMessage(std::uint32_t id) const {
    return findManager(id) != nullptr;
}

std::intptr_t GuiMessageManagerMaster::handleMessage(Platform::WindowHandle /*window*/, std::uint32_t id,
                                                     std::uintptr_t wParam, std::intptr_t lParam) {
    if (GuiMessageManager* const manager = findManager(id)) {
        manager->handleMessage(id, wParam, lParam);
    }
    return 0;
}

bool GuiMessageManagerMaster::currentThreadIsManagerThread() const noexcept {
    return Platform::currentThreadId() == threadId_;
}

GuiMessageManager* GuiMessageManagerMaster::findManager(std::uint32_t id) const {
    const auto manager =
        std::ranges::find_if(managers_, [&](const GuiMessageManager* each) { return each->wantMessage(id); });
    return manager == managers_.end() ? nullptr : *manager;
}

} // namespace Backend
