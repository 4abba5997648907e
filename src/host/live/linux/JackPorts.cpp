#include "host/live/linux/JackPorts.h"

#include "host/live/linux/AbandonableThread.h"
#include "platform/Clocks.h"
#include "platform/Threads.h"

#include <algorithm>
#include <cerrno>

namespace Host {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::nanoseconds betweenTries = 1s;
// When a look left something open. A client that has just registered a port lets nobody connect to it yet.
constexpr std::chrono::nanoseconds betweenLooks = 50ms;
constexpr std::chrono::nanoseconds hidingTime = 100ms;
// The client of a server that has died is not always let go of.
constexpr std::chrono::nanoseconds closePatience = 500ms;

void silence(const char*) {}

// Of the running server: none is started. Null without one. The library is kept from printing.
jack_client_t* openClient(const std::string& name) {
    jack_set_error_function(silence);
    jack_set_info_function(silence);
    jack_status_t status{};
    return jack_client_open(name.c_str(), JackNoStartServer, &status);
}

// A port name may hold no colon and has an end.
std::string portNameFor(const char* prefix, const std::string& foreign) {
    std::string name = prefix + foreign;
    std::replace(name.begin(), name.end(), ':', '/');
    return name.substr(0, static_cast<std::size_t>(jack_port_name_size()) / 2);
}

} // namespace

JackPorts::~JackPorts() {
    if (client_ != nullptr) { // nobody waited for the opening
        jack_client_close(client_);
    }
}

Platform::Result<bool> JackPorts::open() {
    jack_client_t* const client = openClient(wishes_.clientName);
    if (client == nullptr) {
        return false;
    }
    attach(client);
    if (const auto looked = lookFirst(); !looked) {
        detach();
        return looked.fault();
    }
    return true;
}

void JackPorts::attach(jack_client_t* client) {
    client_ = client;
    lost_.store(false);
    process_.connect(client, ++connections_);
    jack_set_process_callback(
        client,
        [](jack_nframes_t frames, void* data) {
            static_cast<JackProcess*>(data)->process(frames);
            return 0;
        },
        &process_);
    jack_on_shutdown(
        client,
        [](void* data) {
            auto* const ports = static_cast<JackPorts*>(data);
            ports->lost_.store(true);
            ports->wake_.signal();
        },
        this);
    jack_set_port_registration_callback(
        client,
        [](jack_port_id_t id, int registered, void* data) {
            auto* const ports = static_cast<JackPorts*>(data);
            if (registered == 0) {
                ports->neighbours_.unregistered(jack_port_by_id(ports->process_.client(), id));
            }
            ports->wake_.signal();
        },
        this);
    jack_set_port_rename_callback(
        client,
        [](jack_port_id_t, const char*, const char*, void* data) { static_cast<JackPorts*>(data)->wake_.signal(); },
        this);
    jack_activate(client);
}

void JackPorts::detach() {
    process_.disconnect();
    ports_ = {};
    connected_ = {};
    neighbours_.clear();
    hiddenUntil_.clear();
    if (client_ != nullptr) {
        AbandonableThread closing([client = client_, alive = shared_from_this()] { jack_client_close(client); });
        static_cast<void>(closing.isDoneWithin(closePatience));
        client_ = nullptr;
    }
}

std::vector<std::string> JackPorts::names(Direction direction) {
    std::vector<std::string> found;
    if (client_ != nullptr && !lost_.load()) {
        found = neighbours_.list(client_, direction);
        if (!wishes_.onlyList) {
            found.insert(found.begin(), ownPortName);
        }
    }
    return found;
}

Platform::Outcome JackPorts::lookFirst() {
    const std::vector<std::string> in = names(Direction::in);
    const std::vector<std::string> out = names(Direction::out);
    if (const auto arranged = lists_.arrange(in, out); !arranged) {
        return arranged;
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

void JackPorts::look() {
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

void JackPorts::lookAt(const std::vector<std::string>& in, const std::vector<std::string>& out) {
    bool changed = lists_.update(in, out);
    changed = settle(Direction::in) || changed;
    changed = settle(Direction::out) || changed;
    if (changed) {
        {
            const std::lock_guard lock(listening_);
            if (listener_ != nullptr) {
                listener_->portsChanged();
            }
        }
        if (wishes_.connect && client_ != nullptr) {
            connectSynthesizer();
        }
    }
}

bool JackPorts::settle(Direction direction) {
    return lists_.settle(direction, [&](int place, const std::string& name, bool isToBeOpen) {
        jack_port_t*& handle = ports_[static_cast<std::size_t>(direction)][static_cast<std::size_t>(place)];
        if (isToBeOpen && handle == nullptr) {
            handle = openPort(direction, name);
            setPort(direction, place, handle);
        } else if (!isToBeOpen && handle != nullptr) {
            setPort(direction, place, nullptr);
            jack_port_unregister(client_, handle);
            handle = nullptr;
        }
        lookAgain_ = !connect(direction, place, name) || lookAgain_;
        return handle != nullptr;
    });
}

void JackPorts::setPort(Direction direction, int place, jack_port_t* port) {
    direction == Direction::in ? process_.setInput(place, port) : process_.setOutput(place, port);
}

jack_port_t* JackPorts::openPort(Direction direction, const std::string& name) {
    const bool in = direction == Direction::in;
    const bool own = name == ownPortName;
    const std::string shortName = own ? (in ? "in" : "out") : portNameFor(in ? "in from " : "out to ", name);
    const unsigned long flags = in ? JackPortIsInput : JackPortIsOutput;
    return jack_port_register(client_, shortName.c_str(), JACK_DEFAULT_MIDI_TYPE, flags, 0);
}

bool JackPorts::connect(Direction direction, int place, const std::string& name) {
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

void JackPorts::connectSynthesizer() {
    const std::vector<std::string> found = names(Direction::out);
    const auto synth = std::find_if(found.begin(), found.end(), looksLikeSynthesizer);
    if (synth != found.end()) {
        const std::string out = std::string(jack_get_client_name(client_)) + ":out";
        jack_connect(client_, out.c_str(), synth->c_str());
    }
}

void JackPorts::watch() {
    while (!ending_.load()) {
        if (client_ != nullptr && !lookAgain_) {
            wake_.wait();
        } else {
            static_cast<void>(wake_.waitFor(client_ == nullptr ? betweenTries : betweenLooks));
        }
        if (ending_.load()) {
            break;
        }
        if (client_ != nullptr && lost_.load()) {
            detach();
        } else if (client_ == nullptr) {
            if (jack_client_t* const client = openClient(wishes_.clientName)) {
                attach(client);
            }
        }
        look();
    }
    sendWhatIsDue();
    detach();
}

void JackPorts::end() {
    ending_.store(true);
    wake_.signal();
}

// What is due is written, and one period more, so that those who run before us in the graph read it too.
void JackPorts::sendWhatIsDue() {
    if (client_ == nullptr) {
        return;
    }
    for (int tries = 0; tries < 500 && !process_.isIdle() && !lost_.load(); ++tries) {
        Platform::sleepMilliseconds(1);
    }
    const std::uint32_t period = process_.periods();
    for (int tries = 0; tries < 100 && process_.periods() - period < 3 && !lost_.load(); ++tries) {
        Platform::sleepMilliseconds(1);
    }
}

void JackPorts::tell(MidiSystemListener* listener) {
    const std::lock_guard lock(listening_);
    listener_ = listener;
}

void JackPorts::enable(Direction direction, int place, bool on) {
    if (lists_.enable(direction, place, on)) {
        wake_.signal();
    }
}

} // namespace Host
