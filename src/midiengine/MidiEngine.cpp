#include "midiengine/MidiEngine.h"

#include "midiengine/MidiEngineMessageManager.h"
#include "midiengine/MidiPlayer.h"
#include "values/NoteFolding.h"

#include <algorithm>
#include <mutex>

namespace Backend::MidiEngine {

namespace {
using Guard = std::lock_guard<CriticalSection>;

constexpr std::int8_t resetVelocity = 100;
constexpr int maxPorts = 128;
constexpr std::int8_t noPort = -1;

bool hasPlausibleData(const QelMidiMessage& message) {
    const int size = message.getMidiMessage().getMessageSize();
    return message.getMidiMessage().isValid() && (size < 1 || message.getD1() >= 0) &&
           (size < 2 || message.getD2() >= 0);
}
} // namespace

MidiEngine::MidiEngine(MidiPlayer& player)
    : player_(player), messageManager_(std::make_unique<MidiEngineMessageManager>(*this)), resets_(player) {}

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
    updateStartTime();
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
        for (EngineTap* tap : sentTaps_) {
            tap->passed(message, false);
        }
    }
    for (EngineTap* tap : taps_) {
        tap->passed(message, swallowed);
    }
    return sent;
}

void MidiEngine::endUnheard(const QelMidiMessage& noteOff) {
    static_cast<void>(
        sounding_.end({noteOff.getOutput(), noteOff.getChannel(), noteOff.getD1()}, Beginning::unheard, false));
    for (EngineTap* tap : taps_) {
        tap->passed(noteOff, true);
    }
}

void MidiEngine::followControl(const QelMidiMessage& message) {
    if (controlFollower_ != nullptr) {
        controlFollower_->passed(message, false);
    }
}

// Resets. --------------------------------------------------------------------------------------------------------

void MidiEngine::sendReset() {
    resetByClock(Reset::soft);
}

void MidiEngine::sendHardReset() {
    resetByClock(Reset::hard);
}

void MidiEngine::resetByClock(Reset kind) {
    const bool hard = kind == Reset::hard;
    if (resets_.mustWait()) {
        resets_.pass(kind, [this, hard] {
            addPending(hard ? QelMidiMessage::createQelHardReset() : QelMidiMessage::createQelReset());
        });
        return;
    }
    const Guard guard(criticalSection_);
    hard ? hardReset() : reset();
}

void MidiEngine::reset() {
    for (NotePlace place = sounding_.takeAny(); place.exists(); place = sounding_.takeAny()) {
        sendNoteOff(place);
    }
    if (exchangingLayers_) { // what is held may go on
        held_.keepThose([](const HeldNote& held) { return held.output == noPort && held.defaultChannel; });
        pausedStartTime_ = startTime() == noTicks ? pausedStartTime_ : startTime();
    } else {
        held_.clear();
    }
    layers_.reset(exchangingLayers_);
    setStartTime(noTicks);
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
    QelMidiMessage noteOff(MessageType::noteOff, place.note, resetVelocity, place.channel, place.output,
                           QelMidiMessage::DEFAULT_ZONE, QelMidiMessage::DEFAULT_INPUT, now_);
    if (startTime() != noTicks) {
        noteOff.setHostTime(hostTimeOfTick()); // not before its Note On
    }
    playMidiInternal(noteOff, false);
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
    updateStartTime();
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
    announceLayers();
    reset(); // what has begun since the one before
    layers_.set(layers);
    held_.keepThose([this](const HeldNote& held) {
        return layers_.resume({MessageType::noteOn, held.sentNote, held.velocity, QelMidiMessage::DEFAULT_CHANNEL,
                               QelMidiMessage::DEFAULT_OUTPUT, held.zone, held.input, now_},
                              *this);
    });
    layers_.forgetPauses();
    setStartTime(layers_.isRunning() ? pausedStartTime_ : noTicks);
    pausedStartTime_ = noTicks;
    exchangingLayers_ = false;
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

void MidiEngine::setOscillatorWatcher(Oscillators::OscillatorWatcher* watcher) {
    const Guard guard(criticalSection_);
    oscillatorWatcher_ = watcher;
}

void MidiEngine::addTap(EngineTap& tap, TapKind kind) {
    const Guard guard(criticalSection_);
    (kind == TapKind::sent ? sentTaps_ : taps_).push_back(&tap);
}

void MidiEngine::removeTap(EngineTap& tap) {
    const Guard guard(criticalSection_);
    std::erase(taps_, &tap);
    std::erase(sentTaps_, &tap);
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
