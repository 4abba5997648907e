// The engine's worker thread: takes events and settings from the other threads and puts them into the engine.
#pragma once

#include "core/WorkerThread.h"
#include "generators/OscList.h"
#include "midiengine/LayerList.h"
#include "midiengine/ZoneMap.h"
#include "values/MidiPort.h"
#include "values/QelMidiMessage.h"

#include <cstdint>
#include <vector>

namespace Backend {
class Barrier;
}

namespace Backend::MidiEngine {

class MidiEngine;

// Posts are handled in order on the worker thread; each comes back at once and may be called from any thread.
// Settings travel as copies.
class MidiEngineMessageManager final {
public:
    // The engine outlives its manager.
    explicit MidiEngineMessageManager(MidiEngine& engine);
    ~MidiEngineMessageManager();
    MidiEngineMessageManager(const MidiEngineMessageManager&) = delete;
    MidiEngineMessageManager& operator=(const MidiEngineMessageManager&) = delete;

    // Starts the worker thread; once, before the first post. stop() handles what was posted before and ends it.
    void start();
    void stop();
    [[nodiscard]] bool currentThreadIsManagerThread() const { return worker_.isCurrentThread(); } // [any]

    // A message that fits the parameters of a thread message travels in them, any other as a copy.
    void postPlayMidi(const QelMidiMessage& message);
    void postPlayMidi(std::vector<QelMidiMessage> messages); // all at once, in order
    void postSetMidiInputPorts(const std::vector<MidiInputPort>& ports);
    void postSetMidiOutputPorts(const std::vector<MidiOutputPort>& ports);
    void postEnableMidiInput(int port, bool on);
    void postEnableMidiOutput(int port, bool on);
    void postSetDefaultMidiOutput(int output);
    void postSetLayerList(const Layers::LayerList& layers); // everything that sounds ends first
    void postSetOscList(const Oscillators::OscList& list);  // the same
    void postSetZoneMap(const Zones::ZoneMap& zones);
    void postSetZone(const Zones::Zone& zone);
    void postSetOscPlaying(const OscId& id, bool on);
    void postSetOscSpeed(const OscId& id, int ticks);
    void postSetTempo(int beatsPerMinute);
    void postSetTempoSource(unsigned char source);
    void postSetMidiThru(bool on);
    // Opens the barrier when all that was posted before has been handled.
    void postBarrier(Barrier& barrier);

    // Block until the clock has done it. [any but engine]
    void sendReset();
    void sendHardReset();

private:
    enum class Command : std::uint32_t;

    void handleMessage(const Platform::ThreadMessage& message);
    bool post(Command command, std::uintptr_t wParam, std::intptr_t lParam = 0);
    template <typename Value> void postValue(Command command, Value&& value);

    MidiEngine& engine_;
    WorkerThread worker_;
};

} // namespace Backend::MidiEngine
