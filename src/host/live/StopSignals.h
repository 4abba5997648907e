// Being asked to end by the system or the user.
#pragma once

#include "platform/AutoResetEvent.h"

namespace Host {

// While it lives, Ctrl-C, a request to terminate and the end of the terminal do not end the program but are noted. One
// at a time.
class StopSignals final {
public:
    // `wake` is signalled as well; it outlives the object.
    explicit StopSignals(Platform::AutoResetEvent& wake);
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    [[nodiscard]] bool wasAsked() const noexcept; // [any]
};

} // namespace Host
