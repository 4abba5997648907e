#include "host/live/linux/JackSystem.h"

#include "host/live/PeriodClock.h"
#include "host/live/PortLists.h"
#include "host/live/linux/JackLibrary.h"
#include "platform/Clocks.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace Host {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::nanoseconds betweenTries = 1s;
// When a look left something open. A client that has just registered a port lets nobody connect to it yet.
constexpr std::chrono::nanoseconds betweenLooks = 50ms;
constexpr std::chrono::nanoseconds hidingTime = 100ms;
constexpr std::chrono::nanoseconds reopenPatience = 1s;
constexpr std::chrono::nanoseconds closePatience = 500ms;
// Farther than this from the clock, a frame cannot be told apart from one of another server.
constexpr std::int32_t plausibleTicks = 5000;

// A port name may hold no colon and has an end.
std::string portNameFor(const char* prefix, const std::string& foreign) {
    std::string name = prefix + foreign;
    std::replace(name.begin(), name.end(), ':', '/');
    return name.substr(0, static_cast<std::size_t>(jack_port_name_size()) / 2);
}

} // namespace

JackSystem::JackSystem(const PortWishes& wishes) : wishes_(wishes) {}

JackSystem::~JackSystem() {
    stop();
}

Platform::Result<std::unique_ptr<JackSystem>> JackSystem::open(const PortWishes& wishes,
                                                               std::chrono::nanoseconds patience) {
    jack_client_t* const client = openJackClient(wishes.clientName, patience);
    if (client == nullptr) {
        return std::unique_ptr<JackSystem>{};
    }
    std::unique_ptr<JackSystem> system(new JackSystem(wishes));
    system->attach(client);
    if (const auto looked = system->lookFirst(); !looked) {
        return looked.fault();
    }
    return system;
}

std::unique_ptr<Clock> JackSystem::createClock(ClockedEngine& engine) {
    auto clock = std::make_unique<PeriodClock>(engine);
    clock_.store(clock.get());
    process_->setClock(clock.get());
    return clock;
}

void JackSystem::attach(jack_client_t* client) {
    client_ = client;
    lost_.store(false);
    process_->connect(client, ++connections_);
    JackProcess* const process = process_.get();
    jack_set_process_callback(
        client,
        [](jack_nframes_t frames, void* data) {
            static_cast<JackProcess*>(data)->process(frames);
            return 0;
        },
        process);
    jack_on_shutdown(
        client,
        [](void* data) {
            auto* const system = static_cast<JackSystem*>(data);
            system->lost_.store(true);
            system->wake_.signal();
        },
        this);
    jack_set_port_registration_callback(
        client,
        [](jack_port_id_t id, int registered, void* data) {
            auto* const system = static_cast<JackSystem*>(data);
            if (registered == 0) {
                system->neighbours_.unregistered(jack_port_by_id(system->process_->client(), id));
            }
            system->wake_.signal();
        },
        this);
    jack_set_port_rename_callback(
        client,
        [](jack_port_id_t, const char*, const char*, void* data) { static_cast<JackSystem*>(data)->wake_.signal(); },
        this);
    jack_activate(client);
}

void JackSystem::detach() {
    process_->disconnect();
    ports_ = {};
    connected_ = {};
    neighbours_.clear();
    hiddenUntil_.clear();
    if (client_ != nullptr) {
        closeJackClient(client_, closePatience, [process = process_] {});
        client_ = nullptr;
    }
}

std::vector<std::string> JackSystem::names(Direction direction) {
    std::vector<std::string> found;
    if (client_ != nullptr && !lost_.load()) {
        found = neighbours_.list(client_, direction);
        if (!wishes_.onlyList) {
            found.insert(found.begin(), ownPortName);
        }
    }
    return found;
}

Platform::Outcome JackSystem::lookFirst() {
    const std::vector<std::string> in = names(Direction::in);
    const std::vector<std::string> out = names(Direction::out);
    {
        const std::lock_guard lock(mutex_);
        const PortArrangement arrangement{wishes_, ownPortName, false};
        if (const auto arranged = arrangement.arrange(inputs_, in, outputs_, out); !arranged) {
            return arranged;
        }
    }
    settle(Direction::in);
    settle(Direction::out);
    if (wishes_.connect) {
        const auto synth = std::find_if(out.begin(), out.end(), looksLikeSynthesizer);
        if (synth == out.end()) {
            return Platform::Fault{{}, 0, "there is no synthesizer to connect to"};
        }
        connectSynthesizer();
    }
    return Platform::success();
}

void JackSystem::look() {
    lookAgain_ = false;
    // JACK says that a port goes while it is still there. Should it be back afterwards, that is seen then.
    const auto now = Platform::monotonicTime();
    for (const std::string& name : neighbours_.takeGone()) {
        hiddenUntil_[name] = now + hidingTime;
    }
    std::erase_if(hiddenUntil_, [now](const auto& hidden) { return hidden.second <= now; });
    lookAgain_ = !hiddenUntil_.empty();
    const auto shown = [this](std::vector<std::string> all) {
        std::erase_if(all, [this](const std::string& name) { return hiddenUntil_.count(name) != 0; });
        return all;
    };
    lookAt(shown(names(Direction::in)), shown(names(Direction::out)));
}

void JackSystem::lookAt(const std::vector<std::string>& in, const std::vector<std::string>& out) {
    bool changed = false;
    {
        const std::lock_guard lock(mutex_);
        changed = PortArrangement{wishes_, ownPortName, false}.update(inputs_, in, outputs_, out);
    }
    changed = settle(Direction::in) || changed;
    changed = settle(Direction::out) || changed;
    if (changed) {
        listener_->portsChanged();
        if (wishes_.connect && client_ != nullptr) {
            connectSynthesizer();
        }
    }
}

bool JackSystem::settle(Direction direction) {
    bool changed = false;
    auto& ours = ports_[static_cast<std::size_t>(direction)];
    for (int place = 0; place < PortRoster::maxPlaces; ++place) {
        PortRoster::Port port;
        {
            const std::lock_guard lock(mutex_);
            if (!roster(direction).has(place)) {
                break;
            }
            port = roster(direction).at(place);
        }
        const bool open = port.present && port.wanted;
        jack_port_t*& handle = ours[static_cast<std::size_t>(place)];
        if (open && handle == nullptr) {
            handle = openPort(direction, port.name);
            direction == Direction::in ? process_->setInput(place, handle) : process_->setOutput(place, handle);
        } else if (!open && handle != nullptr) {
            direction == Direction::in ? process_->setInput(place, nullptr) : process_->setOutput(place, nullptr);
            jack_port_unregister(client_, handle);
            handle = nullptr;
        }
        lookAgain_ = !connect(direction, place, port.name) || lookAgain_;
        const std::lock_guard lock(mutex_);
        bool& isOpen = roster(direction).at(place).open;
        changed = changed || isOpen != (handle != nullptr);
        isOpen = handle != nullptr;
    }
    return changed;
}

jack_port_t* JackSystem::openPort(Direction direction, const std::string& name) {
    const bool in = direction == Direction::in;
    const bool own = name == ownPortName;
    const std::string shortName = own ? (in ? "in" : "out") : portNameFor(in ? "in from " : "out to ", name);
    const unsigned long flags = in ? JackPortIsInput : JackPortIsOutput;
    return jack_port_register(client_, shortName.c_str(), JACK_DEFAULT_MIDI_TYPE, flags, 0);
}

bool JackSystem::connect(Direction direction, int place, const std::string& name) {
    const auto index = static_cast<std::size_t>(place);
    const jack_port_t* const ours = ports_[static_cast<std::size_t>(direction)][index];
    bool& connected = connected_[static_cast<std::size_t>(direction)][index];
    if (ours == nullptr || name == ownPortName) {
        connected = false;
        return true;
    }
    if (!connected) {
        const char* const ourName = jack_port_name(ours);
        const int failure = direction == Direction::in ? jack_connect(client_, name.c_str(), ourName)
                                                       : jack_connect(client_, ourName, name.c_str());
        connected = failure == 0 || failure == EEXIST;
    }
    return connected;
}

void JackSystem::connectSynthesizer() {
    const std::vector<std::string> found = names(Direction::out);
    const auto synth = std::find_if(found.begin(), found.end(), looksLikeSynthesizer);
    if (synth != found.end()) {
        const std::string out = std::string(jack_get_client_name(client_)) + ":out";
        jack_connect(client_, out.c_str(), synth->c_str());
    }
}

void JackSystem::start(MidiSystemListener& listener) {
    listener_ = &listener;
    watcher_ = std::make_unique<Platform::Thread>([this] {
        Platform::setCurrentThreadName("ports");
        watch();
    });
    inputThread_ = std::make_unique<Platform::Thread>([this] {
        Platform::setCurrentThreadName("midi-in");
        static_cast<void>(Platform::setCurrentThreadPriority(Platform::Priority::message));
        handOn();
    });
    watcher_->resume();
    inputThread_->resume();
}

void JackSystem::stop() {
    stopping_.store(true);
    wake_.signal();
    watcher_.reset();
    process_->arrivalEvent().signal();
    inputThread_.reset();
    if (client_ != nullptr && !lost_.load()) {
        // What is due is written, and one period more, so that those who run before us in the graph read it too.
        for (int tries = 0; tries < 500 && !process_->isIdle() && !lost_.load(); ++tries) {
            Platform::sleepMilliseconds(1);
        }
        const std::uint32_t period = process_->periods();
        for (int tries = 0; tries < 100 && process_->periods() - period < 3 && !lost_.load(); ++tries) {
            Platform::sleepMilliseconds(1);
        }
    }
    process_->setClock(nullptr);
    detach();
}

void JackSystem::watch() {
    while (!stopping_.load()) {
        if (client_ != nullptr && !lookAgain_) {
            wake_.wait();
        } else {
            static_cast<void>(wake_.waitFor(client_ == nullptr ? betweenTries : betweenLooks));
        }
        if (stopping_.load()) {
            return;
        }
        if (client_ != nullptr && lost_.load()) {
            detach();
        } else if (client_ == nullptr) {
            if (jack_client_t* const client = openJackClient(wishes_.clientName, reopenPatience)) {
                attach(client);
            }
        }
        look();
    }
}

void JackSystem::handOn() {
    std::vector<JackProcess::Arrived> batch;
    while (!stopping_.load()) {
        process_->arrivalEvent().wait();
        batch.clear();
        for (JackProcess::Arrived arrived; process_->takeArrived(arrived);) {
            batch.push_back(arrived);
        }
        std::stable_sort(batch.begin(), batch.end(), [](const auto& a, const auto& b) { return a.frame < b.frame; });
        if (batch.empty()) {
            continue;
        }
        std::vector<Backend::MidiEngine::QelMidiMessage> messages;
        messages.reserve(batch.size());
        for (const JackProcess::Arrived& arrived : batch) {
            messages.push_back(toMessage(arrived.bytes, arrived.place, tickOf(arrived.frame), arrived.frame));
        }
        PeriodClock* const clock = clock_.load();
        listener_->received(
            std::move(messages), clock == nullptr ? std::function<void()>{} : [clock, frame = batch.back().frame] {
                clock->arrivalsTaken(frame);
            });
    }
}

Backend::Ticks JackSystem::tickOf(std::int64_t frame) const {
    const PeriodClock* const clock = clock_.load();
    if (clock == nullptr) {
        return Backend::noTicks;
    }
    const Backend::Ticks tick = clock->tickAt(frame);
    return std::abs(tick.count - clock->now().count) > plausibleTicks ? Backend::noTicks : tick;
}

std::vector<Backend::MidiInputPort> JackSystem::inputs() const {
    const std::lock_guard lock(mutex_);
    return portList<Backend::MidiInputPort>(inputs_, name());
}

std::vector<Backend::MidiOutputPort> JackSystem::outputs() const {
    const std::lock_guard lock(mutex_);
    return portList<Backend::MidiOutputPort>(outputs_, name());
}

void JackSystem::enableInput(int place, bool on) {
    const std::lock_guard lock(mutex_);
    if (inputs_.has(place)) {
        inputs_.at(place).wanted = on;
        wake_.signal();
    }
}

void JackSystem::enableOutput(int place, bool on) {
    const std::lock_guard lock(mutex_);
    if (outputs_.has(place)) {
        outputs_.at(place).wanted = on;
        wake_.signal();
    }
}

void JackSystem::send(const Backend::MidiEngine::QelMidiMessage& message) noexcept {
    const PeriodClock* const clock = clock_.load(std::memory_order_relaxed);
    if (clock == nullptr || !process_->send(message.getOutput(), toBytes(message), clock->dueFrame(message))) {
        unsendable_.fetch_add(1, std::memory_order_relaxed);
    }
}

MidiSystemCounts JackSystem::counts() const noexcept {
    const JackProcess::Counters& counters = process_->counters();
    MidiSystemCounts counts;
    counts.sysExDropped = counters.sysEx.load(std::memory_order_relaxed);
    counts.malformedDropped = counters.malformed.load(std::memory_order_relaxed);
    counts.arrivalsLost = counters.arrivalsLost.load(std::memory_order_relaxed);
    counts.unsendable = unsendable_.load(std::memory_order_relaxed);
    counts.overflows = counters.overflows.load(std::memory_order_relaxed);
    counts.late = counters.late.load(std::memory_order_relaxed);
    return counts;
}

} // namespace Host
