// The object through which every MIDI event passes on its way out: zones, layers, held notes, output, time.
#pragma once

#include "core/CriticalSection.h"
#include "midiengine/HeldNotes.h"
#include "midiengine/LayerList.h"
#include "midiengine/PendingEvents.h"
#include "midiengine/ZoneMap.h"
#include "platform/AutoResetEvent.h"
#include "values/MidiPort.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

namespace Backend {
class QelIF;
}

namespace Backend::MidiEngine {

class EngineListener;
class MidiEngineMessageManager;
class MidiPlayer;

// Thread picture: the host's clock thread calls playTimeSlice and plays everything; the engine's worker thread
// (getMessageManager) takes commands and events from the other threads; both work under getCriticalSection().
class MidiEngine final {
public:
    // A slice of this many ticks or more plays nothing: the machine has slept.
    static constexpr std::int32_t MAX_TIME_SLICE = 5000;

    // Floor(tempo / 60000 x milliseconds x 480 + 0.5) ticks after engineTimeOrigin.
    [[nodiscard]] static Ticks milliseconds2Ppq(double milliseconds, int tempo);

    // Both references outlive the engine. [backend]
    MidiEngine(QelIF& qel, MidiPlayer& player);
    ~MidiEngine();
    MidiEngine(const MidiEngine&) = delete;
    MidiEngine& operator=(const MidiEngine&) = delete;

    // Takes the two settings and starts the worker thread. [backend]
    void initialize(int defaultOutput, bool midiThru);
    // Stops the worker thread. [backend]
    void end();

    [[nodiscard]] MidiEngineMessageManager& getMessageManager() { return *messageManager_; } // [any]
    [[nodiscard]] CriticalSection& getCriticalSection() { return criticalSection_; }         // [any]

    // Time. ------------------------------------------------------------------------------------------------

    // Plays the ticks from `from` up to `to` - 1; the first call marks the player as running. What was posted
    // without a time is stamped with `to`, so an empty slice (t, t) takes in what is pending and plays nothing.
    // [clock] without the engine lock
    void playTimeSlice(Ticks from, Ticks to);
    // True while an arpeggio, a sequence or an oscillator acts on each tick. While it is false a tick may be run
    // again: it plays what has arrived for it since, and nothing twice. [clock]
    [[nodiscard]] bool isTickDependent() const;
    // True while something is sounding, playing or scheduled. [clock]
    [[nodiscard]] bool isBusy() const;
