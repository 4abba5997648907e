#include "core/MessageManager.h"

#include "core/MessageManagerMaster.h"

#include <cassert>

namespace Backend {

bool MessageManager::currentThreadIsManagerThread() const {
    return master_.currentThreadIsManagerThread();
}

bool MessageManager::post(std::uint32_t id, std::uintptr_t wParam, std::intptr_t lParam) {
    return master_.postMessage(id, wParam, lParam);
}

void MessageManager::awaitSend() {
    assert(!currentThreadIsManagerThread());
    master_.getWaitEvent().wait();
}

void MessageManager::endSend() {
    assert(currentThreadIsManagerThread());
    master_.getWaitEvent().signal();
}

} // namespace Backend
