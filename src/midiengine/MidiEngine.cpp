#include "midiengine/MidiEngine.h"

#include "midiengine/MidiEngineMessageManager.h"
#include "midiengine/MidiPlayer.h"
#include "midiengine/NoteFolding.h"

#include <algorithm>
#include <cmath>
#include <mutex>

namespace Backend::MidiEngine {

namespace {
using Guard = std::lock_guard<CriticalSection>;

// The tempo source that keeps a clock calling slices while the engine waits for one.
constexpr unsigned char waitingForSlice = 255;
constexpr std::int8_t resetVelocity = 100;
constexpr int maxPorts = 128;
constexpr std::int8_t noPort = -1;

bool hasPlausibleData(const QelMidiMessage& message) {
    const int size = message.getMidiMessage().getMessageSize();
    return message.getMidiMessage().isValid() && (size < 1 || message.getD1() >= 0) &&
           (size < 2 || message.getD2() >= 0);
}
} // namespace

Ticks MidiEngine::milliseconds2Ppq(double milliseconds, int tempo) {
    return engineTimeOrigin +
           Ticks{static_cast<std::int32_t>(std::floor(tempo / 60000.0 * milliseconds * ticksPerQuarter + 0.5))};
}

MidiEngine::MidiEngine(MidiPlayer& player)
    : player_(player), messageManager_(std::make_unique<MidiEngineMessageManager>(*this)), machines_{&oscillators_} {}

MidiEngine::~MidiEngine() = default;

void MidiEngine::initialize(int defaultOutput, bool midiThru) {
    {
        const Guard guard(criticalSection_);
        setDefaultMidiOutput(defaultOutput);
        setMidiThru(midiThru);
    }
    messageManager_->start();
}

void MidiEngine::end() {
    messageManager_->stop();
}

// Events. --------------------------------------------------------------------------------------------------------

void MidiEngine::postPlayMidi(const QelMidiMessage& message) {
    messageManager_->postPlayMidi(message);
}

void MidiEngine::addPending(const QelMidiMessage& message) {
    {
        const Guard guard(criticalSection_);
        pending_.add(message);
    }
    player_.eventsArrived();
}

void MidiEngine::addPending(const std::vector<QelMidiMessage>& messages) {
    {
        const Guard guard(criticalSection_);
        for (const QelMidiMessage& message : messages) {
            pending_.add(message);
        }
    }
    player_.eventsArrived();
}

void MidiEngine::playMidi(const QelMidiMessage& message) {
    const auto channel = static_cast<std::uint8_t>(message.getChannel());
    if ((channel > 15 && channel != 255) || message.getOutput() < -1 || !hasPlausibleData(message)) {
        drop();
        return;
    }
    QelMidiMessage routed = message;
    if (routed.isNoteOn()) {
        playNoteOn(routed);
    } else if (routed.isNoteOff()) {
        playNoteOff(routed);
    } else {
        playOther(routed);
    }
}

void MidiEngine::playNoteOn(QelMidiMessage& message) {
    std::int8_t note = message.getD1();
    if (const Zones::Zone* zone = zones_.find(message.getZone())) {
        note = foldNote(std::int64_t{note} + zone->transpose);
    }
    if (held_.isFull()) {
        endPress(*held_.oldest());
    }
    HeldNote& held = held_.press(message, note);
    message.setD1(note);
    if (!isDirect(message)) {
        layers_.noteOn(message, *this);
    } else if (settleDirect(message, message.getOutput())) {
        held.place = {message.getOutput(), message.getChannel(), note};
        held.heard = finalSend(message, false, Beginning::unknown);
    }
}

void MidiEngine::playNoteOff(QelMidiMessage& message) {
    const std::optional<HeldNote> press = held_.release(message);
    if (layers_.hasVelocityRange()) {
        message.setD2(press ? press->velocity : held_.velocityFor(message));
    }
    if (zones_.find(message.getZone()) != nullptr) {
        const int note = !press                    ? held_.takeFromZone(message.getZone(), message.getD1())
                         : press->rememberedByZone ? press->sentNote
                                                   : -1;
        message.setD1(note < 0 ? message.getD1() : static_cast<std::int8_t>(note));
    }
    endNote(message, press);
    // Where the zone has forgotten what it made of the note, the note that was sent ends as well.
    if (press && press->sentNote != message.getD1()) {
        message.setD1(press->sentNote);
        endNote(message, press);
    }
}

void MidiEngine::endNote(const QelMidiMessage& message, const std::optional<HeldNote>& press) {
    if (!isDirect(message)) {
        layers_.noteOff(message, *this);
        return;
    }
    // A note ends on the output where it began, whichever is the default one by now.
    const bool elsewhere = message.isDefaultOutput() && press && press->place.exists();
    QelMidiMessage settled = message;
    if (settleDirect(settled, elsewhere ? press->place.output : message.getOutput())) {
        const bool begunByPress = press && press->sentNote == message.getD1();
        finalSend(settled, false, begunByPress ? press->beginning() : Beginning::unknown);
    }
}

void MidiEngine::playOther(QelMidiMessage& message) {
    if (!isDirect(message)) {
        layers_.other(message, *this);
    } else if (settleDirect(message, message.getOutput())) {
        followControl(message);
        finalSend(message, false, Beginning::unknown);
    }
}

bool MidiEngine::isDirect(const QelMidiMessage& message) {
    return !message.isDefaultOutput() || !message.isDefaultChannel();
}

// Makes output and channel explicit; false, and the event is dropped, when there is no such open port.
bool MidiEngine::settleDirect(QelMidiMessage& message, std::int8_t output) {
    message.setOutput(output == -1 ? defaultOutput() : output);
    if (message.isDefaultChannel() || message.getChannel() < 0) {
        message.setChannel(0);
    }
    if (!isOutputEnabled(message.getOutput())) {
        drop();
        return false;
    }
    return true;
}

void MidiEngine::playMidiInternal(const QelMidiMessage& message, bool keepHeldNotes) {
    finalSend(message, keepHeldNotes, Beginning::unknown);
}

bool MidiEngine::finalSend(const QelMidiMessage& message, bool keepHeldNotes, Beginning beginning) {
    const NotePlace place{message.getOutput(), message.getChannel(), message.getD1()};
    const bool counted =
        message.isNote() && place.output >= 0 && place.channel >= 0 && place.channel <= 15 && place.note >= 0;
    // With thru off nothing that came in goes out, but for the end of what went out before.
    const bool audible = midiThru_ || message.getInput() < 0 || beginning == Beginning::heard;
    const bool swallowed = counted && message.isNoteOff() && sounding_.end(place, beginning, audible) && keepHeldNotes;
    const bool sent = !swallowed && audible;
    if (counted && message.isNoteOn()) {
        sounding_.start(place, sent);
    }
    if (sent) {
        player_.play(message, keepHeldNotes);
    }
    for (EngineTap* tap : taps_) {
        tap->passed(message, swallowed);
    }
    return sent;
}

void MidiEngine::followControl(const QelMidiMessage& message) {
    if (controlFollower_ != nullptr) {
        controlFollower_->passed(message, false);
    }
}

// Resets. --------------------------------------------------------------------------------------------------------

void MidiEngine::sendReset() {
    resetByClock(Command::softReset);
}

void MidiEngine::sendHardReset() {
    resetByClock(Command::hardReset);
}

void MidiEngine::resetByClock(Command command) {
    const bool hard = command == Command::hardReset;
    if (!playerRunning_ || isMidiPlayerThread()) {
        const Guard guard(criticalSection_);
        hard ? hardReset() : reset();
        return;
    }
    const Guard oneAtATime(resetGate_);
    const unsigned char source = player_.getTempoSource();
    player_.setTempoSource(waitingForSlice);
    addPending(hard ? QelMidiMessage::createQelHardReset() : QelMidiMessage::createQelReset());
    (hard ? hardResetEvent_ : resetEvent_).wait();
    player_.setTempoSource(source);
}

void MidiEngine::reset() {
    for (NotePlace place = sounding_.takeAny(); place.exists(); place = sounding_.takeAny()) {
        sendNoteOff(place);
    }
    held_.clear();
    layers_.reset();
    startTime_ = noTicks;
}

void MidiEngine::hardReset() {
    reset();
    for (std::int8_t channel = 0; channel < 16; ++channel) {
        for (QelMidiMessage message : {QelMidiMessage::createAllSoundOffCC(defaultOutput(), channel),
                                       QelMidiMessage::createAllControllersOffCC(defaultOutput(), channel)}) {
            message.setPpq(now_);
            playMidiInternal(message, false);
        }
    }
    QelMidiMessage message = QelMidiMessage::createSystemReset(defaultOutput());
    message.setPpq(now_);
    playMidiInternal(message, false);
}

void MidiEngine::sendNoteOff(const NotePlace& place) {
    playMidiInternal({MessageType::noteOff, place.note, resetVelocity, place.channel, place.output,
                      QelMidiMessage::DEFAULT_ZONE, QelMidiMessage::DEFAULT_INPUT, now_},
                     false);
}

// Time. ----------------------------------------------------------------------------------------------------------

void MidiEngine::playTimeSlice(Ticks from, Ticks to) {
    const Guard guard(criticalSection_);
    if (!isMidiPlayerThread()) {
        playerThread_.store(Platform::currentThreadId(), std::memory_order_relaxed);
        playerRunning_ = true;
    }
    now_ = from;
    if (to < from || from < lastTick_) { // time goes back
        lastTick_ = lastGiven_ = lastStamp_ = noTicks;
    }
    pending_.drainInbox([this, to](const QelMidiMessage& message) { takeIn(message, std::max(to, lastStamp_)); });
    if (from <= to) {
        if ((to - from).count < MAX_TIME_SLICE && from < to) {
            pending_.catchUp(from);
            for (Ticks t = from; t < to; ++t) {
                if (!isTickDependent()) { // nothing happens before the next event
                    const Ticks next = pending_.next();
                    if (next < t || !(next < to)) {
                        break;
                    }
                    t = next;
                }
                processPpq(t, from);
            }
            lastTick_ = to - Ticks{1};
        }
    } else { // the clock was set back: what waits for the times between is played on both sides of the step
        constexpr Ticks around{10};
        for (Ticks t = from; t < from + around; ++t) {
            processPpq(t, to);
        }
        lastGiven_ = noTicks;
        for (Ticks t = to - around; t < to; ++t) {
            processPpq(t, noTicks);
        }
    }
    now_ = noTicks;
}

void MidiEngine::takeIn(const QelMidiMessage& message, Ticks stamp) {
    if (message.isQelReset()) {
        reset();
        resetEvent_.signal();
    } else if (message.isQelHardReset()) {
        hardReset();
        hardResetEvent_.signal();
    } else if (message.isTimedEvent()) {
        pending_.schedule(message);
    } else {
        QelMidiMessage stamped = message;
        stamped.setPpq(stamp);
        lastStamp_ = stamp; // a tick that is run again must not let what comes then overtake this
        pending_.schedule(stamped);
    }
}

void MidiEngine::processPpq(Ticks ppq, Ticks earliest) {
    if (ppq.count < 0) {
        return;
    }
    now_ = ppq;
    pending_.playRange(earliest, ppq, [this, ppq](QelMidiMessage& message) {
        message.setPpq(ppq);
        playMidi(message);
    });
    if (ppq > lastGiven_ && isTickDependent()) {
        lastGiven_ = ppq;
        for (TickMachine* machine : machines_) {
            machine->advance(ppq);
        }
    }
}

bool MidiEngine::isTickDependent() const {
    return std::any_of(machines_.begin(), machines_.end(), [](const TickMachine* each) { return each->isPlaying(); });
}

bool MidiEngine::isBusy() {
    const Guard guard(criticalSection_);
    return isTickDependent() || sounding_.places() > 0 || !pending_.isEmpty() || !pending_.inboxIsEmpty();
}

bool MidiEngine::isMidiPlayerThread() const {
    return playerThread_.load(std::memory_order_relaxed) == Platform::currentThreadId();
}

// Set-up. --------------------------------------------------------------------------------------------------------

void MidiEngine::setDefaultMidiOutput(int output) {
    setDefaultOutput(static_cast<std::int8_t>(output >= 0 && output < maxPorts ? output : noPort));
}

void MidiEngine::setMidiInputPorts(const std::vector<MidiInputPort>& ports) {
    const std::vector<MidiInputPort> before = std::move(inputPorts_);
    inputPorts_ = ports;
    for (std::size_t i = 0; i < before.size() && i < maxPorts; ++i) {
        if (before[i].enabled && (i >= ports.size() || !ports[i].enabled)) {
            releaseInput(static_cast<std::int8_t>(i));
        }
    }
}

void MidiEngine::setMidiOutputPorts(const std::vector<MidiOutputPort>& ports) {
    for (std::size_t i = 0; i < maxPorts; ++i) {
        const bool open = i < ports.size() && ports[i].enabled;
        if (!open && canSendTo(static_cast<std::int8_t>(i))) {
            closeOutput(i);
        }
        setCanSendTo(i, open);
    }
}

void MidiEngine::enableMidiInput(int port, bool on) {
    if (!on && port >= 0 && port < maxPorts) {
        releaseInput(static_cast<std::int8_t>(port));
    }
    player_.enableMidiInput(port, on);
}

void MidiEngine::enableMidiOutput(int port, bool on) {
    if (!on && port >= 0 && port < maxPorts && canSendTo(static_cast<std::int8_t>(port))) {
        for (NotePlace place = sounding_.takeAny(port); place.exists(); place = sounding_.takeAny(port)) {
            sendNoteOff(place);
        }
        closeOutput(static_cast<std::size_t>(port));
    }
    player_.enableMidiOutput(port, on);
}

// Nothing sounds there any more, and nothing that began there needs an end.
void MidiEngine::closeOutput(std::size_t output) {
    const auto place = static_cast<std::int8_t>(output);
    setCanSendTo(output, false);
    sounding_.forget(place);
    held_.forgetOutput(place);
    layers_.forgetOutput(place);
}

// The keys of an input that is gone will never be let go.
void MidiEngine::releaseInput(std::int8_t input) {
    while (const HeldNote* held = held_.oldestOf(input)) {
        endPress(*held);
    }
}

void MidiEngine::endPress(const HeldNote& press) {
    QelMidiMessage noteOff(MessageType::noteOff, press.note, resetVelocity, press.channel, press.output, press.zone,
                           press.input, now_);
    noteOff.setDefaultChannel(press.defaultChannel);
    playNoteOff(noteOff);
}

void MidiEngine::setLayerList(const Layers::LayerList& layers) {
    if (sounding_.places() > 0) { // begun between the reset and now
        reset();
    }
    layers_.set(layers);
}

void MidiEngine::setZoneMap(const Zones::ZoneMap& zones) {
    zones_ = zones;
    held_.forgetZones();
}

void MidiEngine::setZone(const Zones::Zone& zone) {
    if (Zones::Zone* ours = zones_.find(zone.id)) {
        ours->transpose = zone.transpose;
    }
}

void MidiEngine::setOscList(const Oscillators::OscList& list) {
    oscillators_.set(list);
}

void MidiEngine::setOscPlaying(const OscId& id, bool on) {
    if (const auto stopMessage = oscillators_.setPlaying(id, on)) {
        pending_.add(*stopMessage);
    }
    player_.eventsArrived(); // a clock that sleeps learns that ticks count now
}

void MidiEngine::setOscSpeed(const OscId& id, int ticks) {
    oscillators_.setSpeed(id, ticks);
}

void MidiEngine::playFromOscillator(const QelMidiMessage& message) {
    QelMidiMessage stamped = message;
    stamped.setPpq(now_);
    playMidi(stamped);
}

void MidiEngine::oscillatorMoved(OscId id, std::int32_t value) {
    if (oscillatorWatcher_ != nullptr) {
        oscillatorWatcher_->oscillatorMoved(id, value);
    }
}

void MidiEngine::setTempo(int beatsPerMinute) {
    player_.setTempo(beatsPerMinute);
}

void MidiEngine::setTempoSource(unsigned char source) {
    player_.setTempoSource(source);
}

void MidiEngine::addMachine(TickMachine& machine) {
    const Guard guard(criticalSection_);
    machines_.push_back(&machine);
}

void MidiEngine::removeMachine(TickMachine& machine) {
    const Guard guard(criticalSection_);
    std::erase(machines_, &machine);
}

void MidiEngine::setOscillatorWatcher(Oscillators::OscillatorWatcher* watcher) {
    const Guard guard(criticalSection_);
    oscillatorWatcher_ = watcher;
}

void MidiEngine::addTap(EngineTap& tap) {
    const Guard guard(criticalSection_);
    taps_.push_back(&tap);
}

void MidiEngine::removeTap(EngineTap& tap) {
    const Guard guard(criticalSection_);
    std::erase(taps_, &tap);
}

void MidiEngine::setControlFollower(EngineTap* follower) {
    const Guard guard(criticalSection_);
    controlFollower_ = follower;
}

int MidiEngine::soundingNotes() {
    const Guard guard(criticalSection_);
    return sounding_.places();
}

} // namespace Backend::MidiEngine
