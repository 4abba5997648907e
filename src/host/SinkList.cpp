#include "host/SinkList.h"

#include <algorithm>

namespace Host {

void SinkList::play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) {
    for (const auto& sink : sinks_) {
        sink->play(tick, message);
    }
}

void SinkList::setTempo(std::int32_t tick, int beatsPerMinute) {
    for (const auto& sink : sinks_) {
        sink->setTempo(tick, beatsPerMinute);
    }
}

bool SinkList::isGood() const {
    return std::all_of(sinks_.begin(), sinks_.end(), [](const auto& sink) { return sink->isGood(); });
}

Platform::Outcome SinkList::finish(std::int32_t tick) {
    Platform::Outcome first = Platform::success();
    for (const auto& sink : sinks_) {
        if (Platform::Outcome finished = sink->finish(tick); !finished && first) {
            first = std::move(finished);
        }
    }
    return first;
}

} // namespace Host
