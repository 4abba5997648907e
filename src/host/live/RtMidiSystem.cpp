#include "host/live/RtMidiSystem.h"

#include "host/live/MidiBytes.h"
#include "host/live/RtMidiHost.h"
#include "host/live/SleepingClock.h"

#include <RtMidi.h>
#include <algorithm>
#include <cctype>
#include <chrono>
#include <iostream>

namespace Host {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::nanoseconds betweenLooks = 500ms;

// With a callback RtMidi neither throws after construction nor prints.
void ignoreError(RtMidiError::Type, const std::string&, void*) {}

// Takes standard error from RtMidi's constructors, which have no callback yet and remark there that no device is there.
class QuietError final {
public:
    QuietError() : before_(std::cerr.rdbuf(nullptr)) {}
    ~QuietError() {
        std::cerr.rdbuf(before_);
        std::cerr.clear();
    }
    QuietError(const QuietError&) = delete;
    QuietError& operator=(const QuietError&) = delete;

private:
    std::streambuf* before_;
};

template <typename Port> std::unique_ptr<Port> create(const std::string& client) {
    const auto api = static_cast<RtMidi::Api>(rtMidiHost().api);
    std::unique_ptr<Port> port;
    if constexpr (std::is_same_v<Port, RtMidiIn>) {
        port = std::make_unique<Port>(api, client);
        port->ignoreTypes(false, false, false); // all are looked at, to be counted
    } else {
        port = std::make_unique<Port>(api, client);
    }
    port->setErrorCallback(&ignoreError);
    return port;
}

// ALSA puts the client's and the port's number behind the name, WinMM the device's: both may differ after its return.
std::string stableName(std::string name, unsigned index) {
    const auto isDigit = [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; };
    const auto blank = name.rfind(' ');
    if (blank == std::string::npos || blank + 1 == name.size()) {
        return name;
    }
    const std::string last = name.substr(blank + 1);
    const auto colon = last.find(':');
    const bool address = colon != std::string::npos && colon > 0 && colon + 1 < last.size() &&
                         std::all_of(last.begin(), last.end(), [&](char c) { return isDigit(c) || c == ':'; });
    if (address || last == std::to_string(index)) {
        name.erase(blank);
    }
    return name;
}

// All names by RtMidi's numbers; empty for ports of our own.
std::vector<std::string> numberedNames(RtMidi& lister, const std::string& client) {
    std::vector<std::string> names;
    const unsigned count = lister.getPortCount();
    for (unsigned i = 0; i < count; ++i) {
        std::string name = stableName(lister.getPortName(i), i);
        if (name.compare(0, client.size() + 1, client + ":") == 0) {
            name.clear();
        }
        names.push_back(name);
    }
    return names;
}

std::vector<std::string> listedNames(RtMidi& lister, const PortWishes& wishes) {
    std::vector<std::string> names = numberedNames(lister, wishes.clientName);
    names.erase(std::remove(names.begin(), names.end(), std::string{}), names.end());
    if (rtMidiHost().virtualPorts && !wishes.onlyList) {
        names.insert(names.begin(), ownPortName);
    }
    return names;
}

// Opens the port of that name; the n-th of equal names.
bool openNamed(RtMidi& port, RtMidi& lister, const std::string& client, const std::string& name, int n) {
    if (rtMidiHost().virtualPorts && name == ownPortName) {
        port.openVirtualPort(ownPortName);
        return true; // RtMidi does not say
    }
    const std::vector<std::string> names = numberedNames(lister, client);
    for (unsigned i = 0; i < names.size(); ++i) {
        if (names[i] == name && n-- == 0) {
            port.openPort(i, name);
            return port.isPortOpen();
        }
    }
    return false;
}

} // namespace

struct RtMidiSystem::Input {
    RtMidiSystem& system;
    int place;
    std::unique_ptr<RtMidiIn> port;
};

RtMidiSystem::RtMidiSystem(const PortWishes& wishes)
    : wishes_(wishes), lists_(wishes_, rtMidiHost().name, rtMidiHost().virtualPorts ? ownPortName : "", true) {
    const QuietError quiet; // no other thread of ours writes yet
    inputLister_ = create<RtMidiIn>(wishes.clientName);
    outputLister_ = create<RtMidiOut>(wishes.clientName);
}

RtMidiSystem::~RtMidiSystem() {
    stop();
}

Platform::Result<std::unique_ptr<RtMidiSystem>> RtMidiSystem::open(const PortWishes& wishes) {
    const std::string name = rtMidiHost().name;
    if (!rtMidiHost().isThere()) {
        return Platform::Fault{{}, 0, "there is no " + name + " on this machine"};
    }
    try {
        std::unique_ptr<RtMidiSystem> system(new RtMidiSystem(wishes));
        if (const auto listed = system->listFirst(); !listed) {
            return listed.fault();
        }
        return system;
    } catch (const std::exception& error) {
        return Platform::Fault{{}, 0, name + " does not answer: " + error.what()};
    }
}

std::string RtMidiSystem::name() const {
    return rtMidiHost().name;
}

std::unique_ptr<Clock> RtMidiSystem::createClock(ClockedEngine& engine) {
    auto clock = std::make_unique<SleepingClock>(engine);
    clock_.store(clock.get());
    return clock;
}

Platform::Outcome RtMidiSystem::listFirst() {
    if (wishes_.connect) {
        const std::vector<std::string> names = listedNames(*outputLister_, wishes_);
        const auto synthesizer = std::find_if(names.begin(), names.end(), looksLikeSynthesizer);
        if (synthesizer == names.end()) {
            return Platform::Fault{{}, 0, "there is no synthesizer to connect to"};
        }
        wishes_.outputs.insert(wishes_.outputs.begin(), *synthesizer);
    }
    const auto arranged = lists_.arrange(listedNames(*inputLister_, wishes_), listedNames(*outputLister_, wishes_));
    if (arranged) {
        settle();
    }
    return arranged;
}

bool RtMidiSystem::hasPorts() const {
    return !lists_.inputs().empty() || !lists_.outputs().empty();
}

void RtMidiSystem::start(MidiSystemListener& listener) {
    listener_.store(&listener);
    watcher_ = std::make_unique<Platform::Thread>([this] {
        Platform::setCurrentThreadName("ports");
        watch();
    });
    watcher_->resume();
}

void RtMidiSystem::stop() {
    stopping_.store(true);
    wake_.signal();
    watcher_.reset();
    for (auto& input : openInputs_) {
        input.reset(); // RtMidi ends its thread here
    }
    listener_.store(nullptr);
    for (int place = 0; place < PortRoster::maxPlaces; ++place) {
        closeOutput(place);
    }
}

void RtMidiSystem::watch() {
    while (!stopping_.load()) {
        static_cast<void>(wake_.waitFor(betweenLooks));
        if (!stopping_.load()) {
            look();
        }
    }
}

void RtMidiSystem::look() {
    bool changed = false;
    try {
        const std::vector<std::string> inputs = listedNames(*inputLister_, wishes_);
        changed = lists_.update(inputs, listedNames(*outputLister_, wishes_));
    } catch (const std::exception&) { // the next look may go better
    }
    changed = settle() || changed;
    if (changed) {
        listener_.load()->portsChanged();
    }
}

bool RtMidiSystem::settle() {
    const bool in = lists_.settle(PortDirection::in, [this](int place, const std::string& name, bool isToBeOpen) {
        return settleInput(place, name, isToBeOpen);
    });
    const bool out = lists_.settle(PortDirection::out, [this](int place, const std::string& name, bool isToBeOpen) {
        return settleOutput(place, name, isToBeOpen);
    });
    return in || out;
}

bool RtMidiSystem::settleInput(int place, const std::string& name, bool isToBeOpen) {
    std::unique_ptr<Input>& ours = openInputs_[static_cast<std::size_t>(place)];
    if (isToBeOpen != (ours != nullptr)) {
        ours = isToBeOpen ? openInput(place, name) : nullptr;
    }
    return ours != nullptr;
}

bool RtMidiSystem::settleOutput(int place, const std::string& name, bool isToBeOpen) {
    std::unique_ptr<RtMidiOut>& ours = openOutputs_[static_cast<std::size_t>(place)];
    if (isToBeOpen && ours == nullptr) {
        ours = openOutput(place, name);
        sendingOutputs_[static_cast<std::size_t>(place)].store(ours.get());
    } else if (!isToBeOpen && ours != nullptr) {
        closeOutput(place);
    }
    return ours != nullptr;
}

std::unique_ptr<RtMidiSystem::Input> RtMidiSystem::openInput(int place, const std::string& name) {
    try {
        auto input = std::make_unique<Input>(Input{*this, place, create<RtMidiIn>(wishes_.clientName)});
        input->port->setCallback(
            [](double, std::vector<unsigned char>* bytes, void* data) {
                const auto* receiver = static_cast<Input*>(data);
                receiver->system.arrived(receiver->place, *bytes);
            },
            input.get());
        if (openNamed(*input->port, *inputLister_, wishes_.clientName, name,
                      lists_.repetition(PortDirection::in, place))) {
            return input;
        }
    } catch (const std::exception&) { // busy or gone: the list says that it is not enabled
    }
    return nullptr;
}

std::unique_ptr<RtMidiOut> RtMidiSystem::openOutput(int place, const std::string& name) {
    try {
        auto output = create<RtMidiOut>(wishes_.clientName);
        if (openNamed(*output, *outputLister_, wishes_.clientName, name,
                      lists_.repetition(PortDirection::out, place))) {
            return output;
        }
    } catch (const std::exception&) { // as for inputs
    }
    return nullptr;
}

void RtMidiSystem::closeOutput(int place) {
    const auto index = static_cast<std::size_t>(place);
    sendingOutputs_[index].store(nullptr);
    if (sending_.waitUntilOutside()) {
        openOutputs_[index].reset();
    } else {
        static_cast<void>(openOutputs_[index].release()); // the driver is stuck with it
    }
}

void RtMidiSystem::arrived(int place, const std::vector<unsigned char>& raw) noexcept {
    MidiBytes bytes;
    switch (readMidiBytes(raw.data(), raw.size(), bytes)) {
    case Arrival::sysEx:
        sysEx_.fetch_add(1, std::memory_order_relaxed);
        return;
    case Arrival::malformed:
        malformed_.fetch_add(1, std::memory_order_relaxed);
        return;
    case Arrival::message:
        break;
    }
    if (SleepingClock* const clock = clock_.load(); clock != nullptr && clock->arrived(place, bytes)) {
        return;
    }
    if (MidiSystemListener* const listener = listener_.load()) {
        listener->received({toMessage(bytes, place, Backend::noTicks, -1)}, {});
    }
}

void RtMidiSystem::enable(PortDirection direction, int place, bool on) {
    if (lists_.enable(direction, place, on)) {
        wake_.signal();
    }
}

void RtMidiSystem::send(const Backend::MidiEngine::QelMidiMessage& message) noexcept {
    const MidiBytes bytes = toBytes(message);
    const auto place = static_cast<std::size_t>(static_cast<std::uint8_t>(message.getOutput()));
    bool sent = false;
    sending_.enter();
    if (RtMidiOut* const output = place < sendingOutputs_.size() ? sendingOutputs_[place].load() : nullptr;
        output != nullptr && bytes.size > 0) {
        try {
            output->sendMessage(bytes.bytes.data(), bytes.size);
            sent = true;
        } catch (const std::exception&) { // counted below
        }
    }
    sending_.leave();
    if (!sent) {
        unsendable_.fetch_add(1, std::memory_order_relaxed);
    }
}

MidiSystemCounts RtMidiSystem::counts() const noexcept {
    MidiSystemCounts counts;
    counts.sysExDropped = sysEx_.load(std::memory_order_relaxed);
    counts.malformedDropped = malformed_.load(std::memory_order_relaxed);
    counts.unsendable = unsendable_.load(std::memory_order_relaxed);
    return counts;
}

} // namespace Host
