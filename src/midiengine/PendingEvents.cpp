#include "midiengine/PendingEvents.h"

#include <algorithm>

namespace Backend::MidiEngine {

namespace {
constexpr std::size_t usualEvents = 8192;
} // namespace

PendingEvents::PendingEvents() {
    inbox_.reserve(usualEvents);
    taken_.reserve(usualEvents);
    schedule_.reserve(usualEvents);
}

void PendingEvents::schedule(const QelMidiMessage& message) {
    if (isEmpty() || !(message.getPpq() < schedule_.back().getPpq())) {
        schedule_.push_back(message);
        return;
    }
    const auto behind =
        std::upper_bound(schedule_.begin() + static_cast<std::ptrdiff_t>(head_), schedule_.end(), message.getPpq(),
                         [](Ticks time, const QelMidiMessage& scheduled) { return time < scheduled.getPpq(); });
    schedule_.insert(behind, message);
}

void PendingEvents::catchUp(Ticks now) {
    for (std::size_t i = head_; i < schedule_.size() && schedule_[i].getPpq() < now; ++i) {
        schedule_[i].setPpq(now);
    }
}

void PendingEvents::remove(std::size_t first, std::size_t last) {
    if (first == head_) {
        head_ = last;
    } else {
        schedule_.erase(schedule_.begin() + static_cast<std::ptrdiff_t>(first),
                        schedule_.begin() + static_cast<std::ptrdiff_t>(last));
    }
    if (isEmpty()) {
        schedule_.clear();
        head_ = 0;
    } else if (head_ > usualEvents && head_ > schedule_.size() / 2) {
        schedule_.erase(schedule_.begin(), schedule_.begin() + static_cast<std::ptrdiff_t>(head_));
        head_ = 0;
    }
}

} // namespace Backend::MidiEngine
