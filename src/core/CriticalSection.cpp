#include "core/CriticalSection.h"

#include "platform/Threads.h"
#include "platform/WindowMessages.h"

namespace Backend {

CriticalSection::~CriticalSection() {
    lock_.leave();
}

bool CriticalSection::waitWithMessageLoop() {
    while (!lock_.tryEnter()) {
        if (!Platform::dispatchWindowMessages()) {
            return false;
        }
        Platform::sleepMilliseconds(0);
    }
    return true;
}

} // namespace Backend
