// Events that wait for their tick.
#pragma once

#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <cstddef>
#include <vector>

namespace Backend::MidiEngine {

// Two stages under the engine lock: the inbox takes what other threads hand in, in order; the schedule holds what
// the clock has taken in, ordered by time and, within a tick, by arrival. Both keep their memory.
class PendingEvents final {
public:
    PendingEvents();

    // Appends to the inbox. [any thread, under the lock]
    void add(const QelMidiMessage& message) { inbox_.push_back(message); }
    // Gives each message of the inbox, oldest first, to `take`, which may add new ones for the next time. [clock]
    template <typename Take> void drainInbox(Take take) {
        inbox_.swap(taken_);
        for (const QelMidiMessage& message : taken_) {
            take(message);
        }
        taken_.clear();
    }
    [[nodiscard]] bool inboxIsEmpty() const { return inbox_.empty(); }

    // Schedules a timed message behind those of the same tick. [clock]
    void schedule(const QelMidiMessage& message);
    // Moves everything that was due before `now` to `now`, keeping the order: no tick would meet it any more.
    void catchUp(Ticks now);
    // Takes the events of [earliest, latest] out, in order, giving each to `play`, which must not schedule. [clock]
    template <typename Play> void playRange(Ticks earliest, Ticks latest, Play play) {
        if (isEmpty() || schedule_[head_].getPpq() > latest) {
            return;
        }
        std::size_t first = head_;
        while (first < schedule_.size() && schedule_[first].getPpq() < earliest) {
            ++first;
        }
        std::size_t last = first;
        while (last < schedule_.size() && schedule_[last].getPpq() <= latest) {
            play(schedule_[last++]);
        }
        remove(first, last);
    }
    // The time of the next scheduled event; noTicks when there is none.
    [[nodiscard]] Ticks next() const { return isEmpty() ? noTicks : schedule_[head_].getPpq(); }
    [[nodiscard]] bool isEmpty() const { return head_ == schedule_.size(); }

private:
    void remove(std::size_t first, std::size_t last);

    std::vector<QelMidiMessage> inbox_;
    std::vector<QelMidiMessage> taken_;
    std::vector<QelMidiMessage> schedule_; // from head_ on, ordered by time
    std::size_t head_ = 0;
};

} // namespace Backend::MidiEngine
