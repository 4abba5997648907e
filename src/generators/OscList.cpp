#include "generators/OscList.h"

#include <algorithm>

namespace Backend::Oscillators {

const Oscillator* OscList::find(OscId id) const {
    const bool isThere = id.index >= 0 && static_cast<std::size_t>(id.index) < oscillators_.size();
    return isThere ? &oscillators_[static_cast<std::size_t>(id.index)] : nullptr;
}

Oscillator* OscList::find(OscId id) {
    return const_cast<Oscillator*>(static_cast<const OscList*>(this)->find(id));
}

void OscList::append(Oscillator oscillator) {
    if (oscillators_.size() < maxSize) {
        oscillator.id = static_cast<std::int32_t>(oscillators_.size());
        oscillators_.push_back(oscillator);
    }
}

void OscList::merge(const OscList& other) {
    for (const Oscillator& oscillator : other) {
        append(oscillator);
    }
}

bool OscList::hasSameActions(const OscList& other) const {
    return std::equal(begin(), end(), other.begin(), other.end(), [](Oscillator a, Oscillator b) {
        for (Oscillator* each : {&a, &b}) {
            each->id = 0;
            each->selected = each->playing = false;
        }
        return a == b;
    });
}

} // namespace Backend::Oscillators
