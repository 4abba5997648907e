#include "host/live/linux/JackSystem.h"

#include "host/live/PeriodClock.h"
#include "host/live/PortLists.h"
#include "host/live/linux/JackLibrary.h"

#include <algorithm>
#include <cstring>

namespace Host {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::nanoseconds betweenTries = 1s;
constexpr std::chrono::nanoseconds reopenPatience = 1s;
constexpr std::chrono::nanoseconds closePatience = 500ms;
constexpr const char* ownPort = "Tembrel";
// Farther than this from the clock, a frame cannot be told apart from one of another server.
constexpr std::int32_t plausibleTicks = 5000;

struct NameListDeleter {
    void operator()(const char** names) const { jack_free(names); }
};

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
    const auto client = openJackClient(wishes.clientName, patience);
    if (!client) {
        return client.fault();
    }
    std::unique_ptr<JackSystem> system(new JackSystem(wishes));
    system->attach(client.value());
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
        client, [](jack_port_id_t, int, void* data) { static_cast<JackSystem*>(data)->wake_.signal(); }, this);
    jack_set_port_rename_callback(
        client,
        [](jack_port_id_t, const char*, const char*, void* data) { static_cast<JackSystem*>(data)->wake_.signal(); },
        this);
    jack_activate(client);
}

void JackSystem::detach() {
    process_->disconnect();
    ports_ = {};
    if (client_ != nullptr) {
        closeJackClient(client_, closePatience, [process = process_] {});
        client_ = nullptr;
    }
}

std::vector<std::string> JackSystem::names(Direction direction) const {
    std::vector<std::string> found;
    if (client_ == nullptr || lost_.load()) {
        return found;
    }
    found.emplace_back(ownPort);
    const unsigned long flags = direction == Direction::in ? JackPortIsOutput : JackPortIsInput;
    const std::unique_ptr<const char*, NameListDeleter> list(
        jack_get_ports(client_, nullptr, JACK_DEFAULT_MIDI_TYPE, flags));
    for (const char* const* name = list.get(); name != nullptr && *name != nullptr; ++name) {
        const jack_port_t* const port = jack_port_by_name(client_, *name);
        if (port != nullptr && jack_port_is_mine(client_, port) == 0) {
            found.emplace_back(*name);
        }
    }
    return found;
}

Platform::Outcome JackSystem::lookFirst() {
    const std::vector<std::string> in = names(Direction::in);
    const std::vector<std::string> out = names(Direction::out);
    {
        const std::lock_guard lock(mutex_);
        const PortArrangement arrangement{wishes_, ownPort, false};
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

bool JackSystem::look() {
    const std::vector<std::string> in = names(Direction::in);
    const std::vector<std::string> out = names(Direction::out);
    bool changed = false;
    {
        const std::lock_guard lock(mutex_);
        changed = PortArrangement{wishes_, ownPort, false}.update(inputs_, in, outputs_, out);
    }
    changed = settle(Direction::in) || changed;
    changed = settle(Direction::out) || changed;
    return changed;
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
        const std::lock_guard lock(mutex_);
        bool& isOpen = roster(direction).at(place).open;
        changed = changed || isOpen != (handle != nullptr);
        isOpen = handle != nullptr;
    }
    return changed;
}

jack_port_t* JackSystem::openPort(Direction direction, const std::string& name) {
    const bool in = direction == Direction::in;
    const bool own = name == ownPort;
    const std::string shortName = own ? (in ? "in" : "out") : portNameFor(in ? "in from " : "out to ", name);
    const unsigned long flags = in ? JackPortIsInput : JackPortIsOutput;
    jack_port_t* const port = jack_port_register(client_, shortName.c_str(), JACK_DEFAULT_MIDI_TYPE, flags, 0);
    if (port != nullptr && !own) {
        const char* const ourName = jack_port_name(port);
        jack_connect(client_, in ? name.c_str() : ourName, in ? ourName : name.c_str());
    }
    return port;
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
        if (client_ != nullptr) {
            wake_.wait();
        } else {
            static_cast<void>(wake_.waitFor(betweenTries));
        }
        if (stopping_.load()) {
            return;
        }
        bool changed = false;
        if (client_ != nullptr && lost_.load()) {
            detach();
            changed = true;
        } else if (client_ == nullptr) {
            if (const auto client = openJackClient(wishes_.clientName, reopenPatience)) {
                attach(client.value());
            }
        }
        changed = look() || changed;
        if (changed) {
            listener_->portsChanged();
        }
        if (changed && wishes_.connect && client_ != nullptr) {
            connectSynthesizer();
        }
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
        PeriodClock* const clock = clock_.load();
        if (batch.empty() || clock == nullptr) {
            continue;
        }
        std::vector<Backend::MidiEngine::QelMidiMessage> messages;
        messages.reserve(batch.size());
        const std::int32_t now = clock->now().count;
        for (const JackProcess::Arrived& arrived : batch) {
            Backend::Ticks tick = clock->tickAt(arrived.frame);
            if (tick.count < now - plausibleTicks || tick.count > now + plausibleTicks) {
                tick = Backend::noTicks;
            }
            messages.push_back(toMessage(arrived.bytes, arrived.place, tick, arrived.frame));
        }
        listener_->received(std::move(messages), [clock, frame = batch.back().frame] { clock->arrivalsTaken(frame); });
    }
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
