#include "host/live/KeyPressGuess.h"

#include <algorithm>

namespace Host {

namespace {

// After so many repeats in a row the key has certainly been held.
constexpr int certainRepeats = 4;

bool isTapped(const Key& key) {
    const std::uint32_t code = key.getCode();
    return (code >= 33 && code <= 46) || (code >= 112 && code <= 123); // Page Up to Delete, F1 to F12
}

} // namespace

KeyPressGuess::Time KeyPressGuess::waitOf(const Key& key) const {
    if (isTapped(key)) {
        return nextWait;
    }
    return delay_ ? *delay_ + 2 * jitter : firstWait;
}

bool KeyPressGuess::isRepeat(const Held& held, Time now) const {
    const Time gap = now - held.last;
    return held.repeats > 0 || gap <= nextWait || !delay_ || std::chrono::abs(gap - *delay_) <= jitter;
}

void KeyPressGuess::repeat(Held& held, Time now) {
    if (held.repeats == 0) {
        held.firstGap = now - held.last;
    }
    held.last = now;
    ++held.repeats;
    if (held.repeats == certainRepeats && held.firstGap >= shortestDelay) {
        delay_ = held.firstGap;
    }
    for (Held& other : held_) {
        if (other.chord == held.chord) {
            other.until = std::max(now + nextWait, &other == &held ? Time{} : other.until);
        }
    }
}

void KeyPressGuess::typed(const Key& key, Time now, Events& events) {
    passTime(now, events);
    const auto place =
        std::find_if(held_.begin(), held_.end(), [&](const Held& held) { return held.key.getCode() == key.getCode(); });
    if (place != held_.end()) {
        if (place->key == key && isRepeat(*place, now)) {
            repeat(*place, now);
            events.push_back({key, Press::repeat});
            return;
        }
        events.push_back({place->key, Press::up});
        held_.erase(place);
    }
    if (held_.empty() || now - held_.back().since > chordSpread) {
        ++chord_;
    }
    held_.push_back({key, now, now, now + waitOf(key), {}, 0, chord_});
    events.push_back({key, Press::down});
}

void KeyPressGuess::passTime(Time now, Events& events) {
    std::erase_if(held_, [&](const Held& held) {
        const bool over = held.until <= now;
        if (over) {
            events.push_back({held.key, Press::up});
        }
        return over;
    });
}

void KeyPressGuess::liftAll(Events& events) {
    passTime(Time::max(), events);
}

std::optional<KeyPressGuess::Time> KeyPressGuess::deadline() const {
    const auto first =
        std::min_element(held_.begin(), held_.end(), [](const Held& a, const Held& b) { return a.until < b.until; });
    return first == held_.end() ? std::nullopt : std::optional(first->until);
}

} // namespace Host
