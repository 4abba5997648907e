#include "host/live/KeyPoster.h"

#include "core/Barrier.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "host/live/LivePlayer.h"
#include "platform/Threads.h"

namespace Host {

void postKeys(Backend::QelIF& qel, const std::vector<KeyEvent>& events) {
    auto& backend = qel.getQelMessageManager();
    for (const KeyEvent& event : events) {
        if (event.press == Press::up) {
            backend.postKeyUp(event.key);
        } else {
            backend.postKeyDown(event.key, event.press == Press::repeat);
        }
    }
}

void waitForSilence(Backend::QelIF& qel, const LivePlayer& player) {
    Backend::Barrier barrier;
    if (qel.getQelMessageManager().postBarrier(barrier)) {
        barrier.wait();
    }
    constexpr int looks = 20; // what other sources hold goes on
    for (int look = 0; look < looks && player.heldNotes() > 0; ++look) {
        Platform::sleepMilliseconds(5);
    }
}

} // namespace Host
