// Hands the events of a performance to the backend.
#pragma once

#include "host/Performance.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

namespace Backend {
class QelIF;
}

namespace Host {

// System exclusive has no place in the program: it is dropped where it arrives.
[[nodiscard]] bool isSysEx(const MidiArrives& midi) noexcept;

// The message as it comes from its input port; without a time for noTicks.
[[nodiscard]] Backend::MidiEngine::QelMidiMessage incomingMessage(const MidiArrives& midi, Backend::Ticks time);

// Posts what the event says, to be done by the backend's thread. Incoming messages are stamped with `time`; all else
// happens when the backend comes to it. The end of the performance is nothing to the backend, nor is SysEx. [any]
void postEvent(const PerformanceEvent& event, Backend::QelIF& qel, Backend::Ticks time);

} // namespace Host
