// Another client of the JACK server: sends and receives MIDI, frame by frame.
#pragma once

#include <atomic>
#include <cstdint>
#include <jack/jack.h>
#include <mutex>
#include <string>
#include <vector>

// Has the ports "out" and "in".
class JackPeer final {
public:
    struct Event {
        std::int64_t frame = 0; // counted by the peer from its first period
        std::string bytes;      // "90 60 100": the status in hex, data in decimal
    };

    explicit JackPeer(const std::string& name);
    ~JackPeer();
    JackPeer(const JackPeer&) = delete;
    JackPeer& operator=(const JackPeer&) = delete;

    [[nodiscard]] bool isOpen() const { return client_ != nullptr; }
    // True once the port is there.
    [[nodiscard]] bool sees(const std::string& port) const;
    // Connects our output to `to` and `from` to our input.
    [[nodiscard]] bool connect(const std::string& to, const std::string& from) const;
    [[nodiscard]] std::vector<std::string> connections(const std::string& port) const;

    // Sends from the next period on, each message at `offset` frames into a period of its own, or all in one.
    void send(std::vector<std::vector<std::uint8_t>> messages, std::vector<std::int32_t> offsets);
    void sendAtOnce(std::vector<std::vector<std::uint8_t>> messages);

    // Drops what was sent and received so far.
    void forget();

    [[nodiscard]] std::vector<Event> sent() const;
    [[nodiscard]] std::vector<Event> received() const;
    // Periods in which the server was not in time, since the last call.
    [[nodiscard]] int takeXruns() { return xruns_.exchange(0); }

private:
    void process(jack_nframes_t frames);

    jack_client_t* client_ = nullptr;
    jack_port_t* out_ = nullptr;
    jack_port_t* in_ = nullptr;
    std::atomic<int> xruns_ = 0;

    mutable std::mutex mutex_; // tests may let the callback wait
    struct Outgoing {
        std::vector<std::uint8_t> bytes;
        std::int32_t offset;
        bool ownPeriod;
    };
    std::vector<Outgoing> outgoing_;
    std::vector<Event> sent_;
    std::vector<Event> received_;
};
