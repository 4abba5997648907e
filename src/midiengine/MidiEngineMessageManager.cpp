#include "midiengine/MidiEngineMessageManager.h"

#include "core/Barrier.h"
#include "core/MessageParameters.h"
#include "midiengine/MidiEngine.h"

#include <mutex>
#include <utility>

namespace Backend::MidiEngine {

// Numbers that other parts of the program know.
enum class MidiEngineMessageManager::Command : std::uint32_t {
    playPacked = Platform::applicationMessage + 0x66,
    playCopy = Platform::applicationMessage + 0x67,
    setMidiInputPorts = Platform::applicationMessage + 0x68,
    setMidiOutputPorts = Platform::applicationMessage + 0x69,
    enableMidiInput = Platform::applicationMessage + 0x6A,
    enableMidiOutput = Platform::applicationMessage + 0x6B,
    setDefaultMidiOutput = Platform::applicationMessage + 0x6C,
    setLayerList = Platform::applicationMessage + 0x6D,
    setOscList = Platform::applicationMessage + 0x6E,
    setZoneMap = Platform::applicationMessage + 0x6F,
    setZone = Platform::applicationMessage + 0x70,
    setOscPlaying = Platform::applicationMessage + 0x71,
    setOscSpeed = Platform::applicationMessage + 0x72,
    setTempo = Platform::applicationMessage + 0x73,
    setTempoSource = Platform::applicationMessage + 0x74,
    setMidiThru = Platform::applicationMessage + 0x75,
    playBatch = Platform::applicationMessage + 0x76,
    openBarrier = Platform::applicationMessage + 0x77,
};

MidiEngineMessageManager::MidiEngineMessageManager(MidiEngine& engine)
    : engine_(engine), worker_(
                           "tembrel-engine", [] { Platform::setCurrentThreadPriority(Platform::Priority::message); },
                           [this](const Platform::ThreadMessage& message) { handleMessage(message); }) {}

MidiEngineMessageManager::~MidiEngineMessageManager() = default;

void MidiEngineMessageManager::start() {
    worker_.start();
}

void MidiEngineMessageManager::stop() {
    worker_.stop();
}

bool MidiEngineMessageManager::post(Command command, std::uintptr_t wParam, std::intptr_t lParam) {
    return worker_.post({static_cast<std::uint32_t>(command), wParam, lParam});
}

template <typename Value> void MidiEngineMessageManager::postValue(Command command, Value&& value) {
    postCopy(std::forward<Value>(value), [&](std::uintptr_t copy) { return post(command, copy); });
}

void MidiEngineMessageManager::postPlayMidi(const QelMidiMessage& message) {
    if (message.fitsParameters()) {
        post(Command::playPacked, static_cast<std::uintptr_t>(message.getWparam()),
             static_cast<std::intptr_t>(message.getLparam()));
    } else {
        postValue(Command::playCopy, message);
    }
}

void MidiEngineMessageManager::postPlayMidi(std::vector<QelMidiMessage> messages) {
    postValue(Command::playBatch, std::move(messages));
}

void MidiEngineMessageManager::postSetMidiInputPorts(const std::vector<MidiInputPort>& ports) {
    postValue(Command::setMidiInputPorts, ports);
}

void MidiEngineMessageManager::postSetMidiOutputPorts(const std::vector<MidiOutputPort>& ports) {
    postValue(Command::setMidiOutputPorts, ports);
}

void MidiEngineMessageManager::postEnableMidiInput(int port, bool on) {
    post(Command::enableMidiInput, asWParam(port), asLParam(on));
}

void MidiEngineMessageManager::postEnableMidiOutput(int port, bool on) {
    post(Command::enableMidiOutput, asWParam(port), asLParam(on));
}

void MidiEngineMessageManager::postSetDefaultMidiOutput(int output) {
    post(Command::setDefaultMidiOutput, asWParam(output));
}

void MidiEngineMessageManager::postSetLayerList(const Layers::LayerList& layers) {
    postValue(Command::setLayerList, layers);
}

void MidiEngineMessageManager::postSetZoneMap(const Zones::ZoneMap& zones) {
    postValue(Command::setZoneMap, zones);
}

void MidiEngineMessageManager::postSetZone(const Zones::Zone& zone) {
    postValue(Command::setZone, zone);
}

void MidiEngineMessageManager::postSetOscList(const Oscillators::OscList& list) {
    postValue(Command::setOscList, list);
}

void MidiEngineMessageManager::postSetOscPlaying(const OscId& id, bool on) {
    post(Command::setOscPlaying, asWParam(id.index), asLParam(on));
}

void MidiEngineMessageManager::postSetOscSpeed(const OscId& id, int ticks) {
    post(Command::setOscSpeed, asWParam(id.index), ticks);
}

void MidiEngineMessageManager::postSetTempo(int beatsPerMinute) {
    post(Command::setTempo, asWParam(beatsPerMinute));
}

void MidiEngineMessageManager::postSetTempoSource(unsigned char source) {
    post(Command::setTempoSource, source);
}

void MidiEngineMessageManager::postSetMidiThru(bool on) {
    post(Command::setMidiThru, asWParam(on));
}

void MidiEngineMessageManager::postBarrier(Barrier& barrier) {
    if (!post(Command::openBarrier, reinterpret_cast<std::uintptr_t>(&barrier))) {
        barrier.open();
    }
}

void MidiEngineMessageManager::sendReset() {
    engine_.sendReset();
}

void MidiEngineMessageManager::sendHardReset() {
    engine_.sendHardReset();
}

void MidiEngineMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    const auto number = static_cast<int>(message.wParam);
    const bool on = message.lParam != 0;
    const auto underLock = [this](auto&& work) {
        const std::lock_guard<CriticalSection> guard(engine_.getCriticalSection());
        work();
    };
    switch (static_cast<Command>(message.id)) {
    case Command::playPacked:
        engine_.addPending(QelMidiMessage(std::uint64_t{message.wParam}, std::int64_t{message.lParam}));
        break;
    case Command::playCopy:
        engine_.addPending(*takeCopy<QelMidiMessage>(message.wParam));
        break;
    case Command::playBatch:
        engine_.addPending(*takeCopy<std::vector<QelMidiMessage>>(message.wParam));
        break;
    case Command::setMidiInputPorts: {
        const auto ports = takeCopy<std::vector<MidiInputPort>>(message.wParam);
        underLock([&] { engine_.setMidiInputPorts(*ports); });
        break;
    }
    case Command::setMidiOutputPorts: {
        const auto ports = takeCopy<std::vector<MidiOutputPort>>(message.wParam);
        underLock([&] { engine_.setMidiOutputPorts(*ports); });
        break;
    }
    case Command::enableMidiInput:
        underLock([&] { engine_.enableMidiInput(number, on); });
        break;
    case Command::enableMidiOutput:
        underLock([&] { engine_.enableMidiOutput(number, on); });
        break;
    case Command::setDefaultMidiOutput:
        underLock([&] { engine_.setDefaultMidiOutput(number); });
        break;
    case Command::setLayerList: {
        const auto layers = takeCopy<Layers::LayerList>(message.wParam);
        underLock([&] { engine_.announceLayers(); });
        engine_.sendReset(); // waits for the clock, so not under the lock
        underLock([&] { engine_.setLayerList(*layers); });
        break;
    }
    case Command::setOscList: {
        const auto list = takeCopy<Oscillators::OscList>(message.wParam);
        engine_.sendReset(); // as above
        underLock([&] { engine_.setOscList(*list); });
        break;
    }
    case Command::setZoneMap: {
        const auto zones = takeCopy<Zones::ZoneMap>(message.wParam);
        underLock([&] { engine_.setZoneMap(*zones); });
        break;
    }
    case Command::setZone: {
        const auto zone = takeCopy<Zones::Zone>(message.wParam);
        underLock([&] { engine_.setZone(*zone); });
        break;
    }
    case Command::setOscPlaying:
        underLock([&] { engine_.setOscPlaying({number}, on); });
        break;
    case Command::setOscSpeed:
        underLock([&] { engine_.setOscSpeed({number}, static_cast<int>(message.lParam)); });
        break;
    case Command::setTempo:
        underLock([&] { engine_.setTempo(number); });
        break;
    case Command::setTempoSource:
        underLock([&] { engine_.setTempoSource(static_cast<unsigned char>(number)); });
        break;
    case Command::setMidiThru:
        underLock([&] { engine_.setMidiThru(number != 0); });
        break;
    case Command::openBarrier:
        reinterpret_cast<Barrier*>(message.wParam)->open();
        break;
    }
}

} // namespace Backend::MidiEngine
