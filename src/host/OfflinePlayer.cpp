#include "host/OfflinePlayer.h"

#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <algorithm>

namespace Host {

void OfflinePlayer::play(const Backend::MidiEngine::QelMidiMessage& message, bool) {
    const Backend::Ticks time = message.getPpq();
    const std::int32_t tick = time.count < 0 ? position_ : (time - Backend::engineTimeOrigin).count;
    lastTick_ = std::max(lastTick_, tick);
    ++playedMessages_;
    sink_.play(lastTick_, message);
}

void OfflinePlayer::eventsArrived() {
    arrived_ = true;
    if (watching_) {
        wake();
    }
}

void OfflinePlayer::watchArrivals(bool on) {
    watching_ = on;
}

} // namespace Host
