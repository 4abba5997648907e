// The ports at a JACK server, ours and those of others.
#pragma once

#include "host/live/MidiSystem.h"
#include "host/live/PortLists.h"
#include "host/live/PortWishes.h"
#include "host/live/linux/JackNeighbours.h"
#include "host/live/linux/JackProcess.h"
#include "platform/AutoResetEvent.h"
#include "platform/Result.h"

#include <array>
#include <atomic>
#include <chrono>
#include <jack/jack.h>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Host {

// All that asks something of the server is done here, by one thread at a time, the watcher: a server that hangs keeps
// it for as long as it hangs, and nobody else. So whoever is inside shares in the ownership.
class JackPorts final : public std::enable_shared_from_this<JackPorts> {
public:
    explicit JackPorts(const PortWishes& wishes) : wishes_(wishes), lists_(wishes_, "JACK", ownPortName, false) {}
    ~JackPorts();
    JackPorts(const JackPorts&) = delete;
    JackPorts& operator=(const JackPorts&) = delete;

    // Becomes a client and opens what is wished for; false without a server, a fault when there is no port for a wish.
    // [watcher]
    [[nodiscard]] Platform::Result<bool> open();
    // Keeps up with ports and servers that come and go until end() is called; then sends what is due and closes
    // everything. [watcher]
    void watch();
    void end(); // [any]

    // Is told of changes; null: nobody, and nobody is being told any more on return. [main]
    void tell(MidiSystemListener* listener);

    [[nodiscard]] const PortLists& lists() const noexcept { return lists_; } // [any]
    void enable(PortDirection direction, int place, bool on);                // [any]

    [[nodiscard]] JackProcess& process() noexcept { return process_; }
    [[nodiscard]] const JackProcess& process() const noexcept { return process_; }

private:
    using Direction = PortDirection;

    void attach(jack_client_t* client);
    void detach();
    void sendWhatIsDue();
    // Brings the lists up to date, opens and closes what has to be, and says so.
    void look();
    void lookAt(const std::vector<std::string>& in, const std::vector<std::string>& out);
    [[nodiscard]] Platform::Outcome lookFirst();
    bool settle(Direction direction);
    [[nodiscard]] jack_port_t* openPort(Direction direction, const std::string& name);
    // Connects our port at that place to the one it is for; false when it has to be tried again.
    bool connect(Direction direction, int place, const std::string& name);
    void connectSynthesizer();
    [[nodiscard]] std::vector<std::string> names(Direction direction);
    void setPort(Direction direction, int place, jack_port_t* port);

    const PortWishes wishes_;
    PortLists lists_;
    JackProcess process_;

    // The watcher's.
    jack_client_t* client_ = nullptr;
    std::uint32_t connections_ = 0;
    JackNeighbours neighbours_;
    std::map<std::string, std::chrono::nanoseconds> hiddenUntil_; // ports that are about to go
    std::array<std::array<jack_port_t*, PortRoster::maxPlaces>, 2> ports_{};
    std::array<std::array<bool, PortRoster::maxPlaces>, 2> connected_{}; // once; the user may part them again
    bool lookAgain_ = false;                                             // soon, without being told

    std::mutex listening_; // over the listener, also while it is told
    MidiSystemListener* listener_ = nullptr;

    Platform::AutoResetEvent wake_;
    std::atomic<bool> lost_ = false;
    std::atomic<bool> ending_ = false;
};

} // namespace Host
