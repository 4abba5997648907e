// The object through which every MIDI event passes on its way out: zones, layers, held notes, output, time.
#pragma once

#include "core/CriticalSection.h"
#include "generators/OscillatorOutput.h"
#include "generators/OscillatorRack.h"
#include "midiengine/EngineTap.h"
#include "midiengine/HeldNotes.h"
#include "midiengine/LayerOutput.h"
#include "midiengine/LayerRack.h"
#include "midiengine/PendingEvents.h"
#include "midiengine/ResetGate.h"
#include "midiengine/SoundingNotes.h"
#include "midiengine/ZoneMap.h"
#include "values/MidiPort.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Backend::MidiEngine {

class MidiEngineMessageManager;
class MidiPlayer;

// Thread picture: the host's clock thread calls playTimeSlice and plays everything; the engine's worker thread
// (getMessageManager) takes commands and events from the other threads; both work under getCriticalSection().
// Operations marked [engine] are called by the worker's handlers, under that lock unless they say otherwise.
class MidiEngine final : private LayerOutput, private Oscillators::OscillatorOutput {
public:
    // A slice of this many ticks or more plays nothing: the machine has slept.
    static constexpr std::int32_t MAX_TIME_SLICE = 5000;

    // Floor(tempo / 60000 x milliseconds x 480 + 0.5) ticks after engineTimeOrigin.
    [[nodiscard]] static Ticks milliseconds2Ppq(double milliseconds, int tempo);

    // `player` outlives the engine. [backend]
    explicit MidiEngine(MidiPlayer& player);
    ~MidiEngine();
    MidiEngine(const MidiEngine&) = delete;
    MidiEngine& operator=(const MidiEngine&) = delete;

    // Takes the two settings and starts the worker thread; end() stops it. [backend]
    void initialize(int defaultOutput, bool midiThru);
    void end();

    [[nodiscard]] MidiEngineMessageManager& getMessageManager() { return *messageManager_; } // [any]
    [[nodiscard]] CriticalSection& getCriticalSection() { return criticalSection_; }         // [any]

    // Events. ----------------------------------------------------------------------------------------------------

    // Hands an event to the worker thread; it is played in the clock's next slice, or at its time. [any]
    void postPlayMidi(const QelMidiMessage& message);
    // Puts an event into the pending queue and tells the player. [engine] takes the lock itself
    void addPending(const QelMidiMessage& message);
    void addPending(const std::vector<QelMidiMessage>& messages);
    // Routes one event through its zone, to its own output or through the layers. [clock]
    void playMidi(const QelMidiMessage& message);
    // The final send of an event whose output and channel are settled: counts notes, calls player and taps. [clock]
    void playMidiInternal(const QelMidiMessage& message, bool keepHeldNotes);

    // Resets. ----------------------------------------------------------------------------------------------------

    // Ends everything that sounds and forgets what is held. Blocks until the clock has done so in a slice of its
    // own; at once while the clock has never run, or when called by it. [any]
    void sendReset();
    // The same, and then All Sound Off and Reset All Controllers on each channel of the default output, and one
    // System Reset. [any]
    void sendHardReset();

    // Time. ------------------------------------------------------------------------------------------------------

    // Plays the ticks from `from` up to `to` - 1; the first call marks the player as running. What was posted
    // without a time is stamped with `to`, so an empty slice (t, t) takes in what is pending and plays nothing; but
    // never before what was stamped earlier, when a tick is run again. [clock] without the engine lock
    void playTimeSlice(Ticks from, Ticks to);
    // For taps: the place of the layer that sends what they are told of; -1: it has gone by no layer. [clock]
    using LayerOutput::sendingLayer;
    // True while an arpeggio, a sequence or an oscillator acts on each tick. While it is false a tick may be run
    // again: it plays what has arrived for it since, and nothing twice. [clock] takes the lock itself
    [[nodiscard]] bool isTickDependent();
    // Another number in each slice: what taps see under the same number happens at one moment. [clock]
    [[nodiscard]] std::uint32_t sliceNumber() const { return sliceNumber_; }
    // True while something sounds, waits for its time or has not been taken in. [any]
    [[nodiscard]] bool isBusy();
    [[nodiscard]] bool isMidiPlayerThread() const { return resets_.isClockThread(); } // [any]
    // The tick at which the running arpeggios and sequences began; noTicks while none runs. [clock]
    [[nodiscard]] Ticks getStartTime() const { return startTime(); }
    void setStartTime(Ticks time) { LayerOutput::setStartTime(time); }
    // Forgets the start time when nothing runs any more. [clock, engine]
    void updateStartTime();
    // Moves the sequences of layers without arpeggio to their next step: every quarter note from the start time on.
    // [clock]
    void pulseSequencer() { layers_.pulse(); }

    // Set-up. ----------------------------------------------------------------------------------------------------

    void setMidiInputPorts(const std::vector<MidiInputPort>& ports);   // [engine] ends what vanished inputs held
    void setMidiOutputPorts(const std::vector<MidiOutputPort>& ports); // [engine] forgets what vanished outputs played
    void enableMidiInput(int port, bool on);                           // [engine] ends what a disabled input held
    void enableMidiOutput(int port, bool on);                          // [engine] ends what a disabled output plays
    [[nodiscard]] bool isOutputEnabled(std::int8_t output) const { return canSendTo(output); } // [clock, engine]
    void setDefaultMidiOutput(int output);                                                     // [engine]
    [[nodiscard]] int getDefaultMidiOutput() const { return defaultOutput(); }                 // [clock, engine]
    void setMidiThru(bool on) { midiThru_ = on; }                                              // [engine]
    // Whoever exchanges the layers announces it, resets (sendReset), and then hands the new ones over: nothing that
    // sounds is known to them, and what has begun since is ended here. Keys that are held all the while go on in
    // arpeggios, on the beats as they were. [engine]
    void announceLayers() { exchangingLayers_ = true; }
    void setLayerList(const Layers::LayerList& layers);
    void setZoneMap(const Zones::ZoneMap& zones); // [engine] zones forget the notes they hold
    void setZone(const Zones::Zone& zone);        // [engine] changes the transposition; unknown ids change nothing
    // Whoever exchanges the oscillators resets first. Those that played and do not any more send their stop values.
    void setOscList(const Oscillators::OscList& list); // [engine]
    void setOscPlaying(const OscId& id, bool on);      // [engine] one that stops sends its stop value
    void setOscSpeed(const OscId& id, int ticks);      // [engine]
    void setTempo(int beatsPerMinute);                 // [engine]
    void setTempoSource(unsigned char source);         // [engine]

    // Taps outlive their being listed. [any] takes the lock itself
    void addTap(EngineTap& tap, TapKind kind = TapKind::all);
    void removeTap(EngineTap& tap);
    // Told of what is to be seen of playing oscillators; null: nobody. [any] takes the lock itself
    void setOscillatorWatcher(Oscillators::OscillatorWatcher* watcher);
    // Told of each message that is no note, for the controls on screen; null: nobody. [any] takes the lock itself
    void setControlFollower(EngineTap* follower);

    // What was dropped without a word: events that are no MIDI, or for no port that there is. [any]
    [[nodiscard]] std::uint64_t droppedEvents() const { return dropped_.load(std::memory_order_relaxed); }
    // Number of places that sound. [any]
    [[nodiscard]] int soundingNotes();

private:
    using Reset = ResetGate::Reset;

    // LayerOutput
    bool sendFromLayer(const QelMidiMessage& message, bool keepHeldNotes, Beginning beginning) override {
        return finalSend(message, keepHeldNotes, beginning);
    }
    void endUnheard(const QelMidiMessage& noteOff) override;
    void followControl(const QelMidiMessage& message) override;
    void beginTime(Ticks now, std::int64_t hostTime) override;
    [[nodiscard]] std::int64_t hostTimeOfTick() override;
    // OscillatorOutput
    void playFromOscillator(const QelMidiMessage& message) override;
    void oscillatorMoved(OscId id, std::int32_t value) override;

    void takeIn(const QelMidiMessage& message, Ticks stamp, Ticks earliest);
    void processPpq(Ticks ppq, Ticks earliest);
    [[nodiscard]] bool actsOnTicks() const;
    void playNoteOn(QelMidiMessage& message);
    void playNoteOff(QelMidiMessage& message);
    void playOther(QelMidiMessage& message);
    [[nodiscard]] static bool isDirect(const QelMidiMessage& message);
    [[nodiscard]] bool settleDirect(QelMidiMessage& message, std::int8_t output);
    bool finalSend(const QelMidiMessage& message, bool keepHeldNotes, Beginning beginning);
    void sendNoteOff(const NotePlace& place);
    void reset();
    void hardReset();
    void resetByClock(Reset kind);
    void releaseInput(std::int8_t input);
    void endPress(const HeldNote& press);
    void endNote(const QelMidiMessage& message, const std::optional<HeldNote>& press);
    void closeOutput(std::size_t output);
    void drop() { dropped_.fetch_add(1, std::memory_order_relaxed); }

    MidiPlayer& player_;
    std::unique_ptr<MidiEngineMessageManager> messageManager_;
    CriticalSection criticalSection_;

    // Under the lock.
    bool midiThru_ = true;
    std::vector<MidiInputPort> inputPorts_;
    Zones::ZoneMap zones_;
    LayerRack layers_;
    HeldNotes held_;
    SoundingNotes sounding_;
    PendingEvents pending_;
    Oscillators::OscillatorRack oscillators_{*this};
    Oscillators::OscillatorWatcher* oscillatorWatcher_ = nullptr;
    std::vector<EngineTap*> taps_;
    std::vector<EngineTap*> sentTaps_;
    EngineTap* controlFollower_ = nullptr;
    Ticks now_ = noTicks; // of the slice or tick that is being played
    std::uint32_t sliceNumber_ = 0;
    // Since time went back:
    Ticks lastTick_ = noTicks;          // the latest tick that was played
    Ticks lastGiven_ = noTicks;         // the latest tick that was given to what acts on ticks
    Ticks lastStamp_ = noTicks;         // of the latest untimed event
    std::int64_t hostTimePastTick_ = 0; // of the message with which the start time began, within its tick
    bool exchangingLayers_ = false;
    Ticks pausedStartTime_ = noTicks; // of the arpeggios that go on with the new layers

    ResetGate resets_;
    std::atomic<std::uint64_t> dropped_ = 0;
};

} // namespace Backend::MidiEngine
