// Who looks on while oscillators play.
#pragma once

#include "values/OscId.h"

#include <cstdint>

namespace Backend::Oscillators {

class OscillatorWatcher {
public:
    // A playing oscillator has come to a value that is to be seen. Must not block or allocate. [clock]
    virtual void oscillatorMoved(OscId id, std::int32_t value) = 0;

protected:
    ~OscillatorWatcher() = default;
};

} // namespace Backend::Oscillators
