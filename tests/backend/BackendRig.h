// The whole backend in one process: its own folder, a player without devices, and the test as the clock.
#pragma once

#include "core/QelIF.h"
#include "platform/Joysticks.h"
#include "support/FakePlayer.h"
#include "support/TemporaryFolder.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class BackendRig final {
public:
    BackendRig() { start(); }
    ~BackendRig() { stop(); }
    BackendRig(const BackendRig&) = delete;
    BackendRig& operator=(const BackendRig&) = delete;

    // Two inputs and three outputs, all open.
    void start();
    void stop();

    // Posts, waits until it has reached the engine, and plays a tick; gives what was played, parted by "; ", without
    // ticks: "OUTPUT STATUS D1 D2".
    std::string after(const std::function<void(Backend::QelMessageManager&)>& post);
    // The same for an operation that only the backend itself may call: while its thread has nothing to do.
    std::string afterDirect(const std::function<void(Backend::QelIF&)>& operation);
    // Messages from an input: status with channel, data.
    std::string afterMidi(int status, int d1, int d2, int input = 0);
    // What a Note On of key 60 and its Note Off play.
    std::string afterKey();

    void run(int ticks);
    // The machine stands still for so long: one slice of all those ticks.
    void sleep(int ticks);

    std::string writeFile(const std::string& name, const std::string& text); // gives its path
    // "file:line: reason" of each fault since the last call, without the folder.
    [[nodiscard]] std::vector<std::string> takeFaults();

    TestSupport::FakePlayer player;
    std::unique_ptr<Backend::QelIF> qel;
    std::vector<Backend::MidiInputPort> inputs;
    std::vector<Backend::MidiOutputPort> outputs;
    std::function<std::unique_ptr<Platform::Joysticks>()> openJoysticks; // at the next start

private:
    void settle();
    void slice(int from, int to);

    TemporaryFolder folder_;
    std::vector<std::string> faults_;
    int tick_ = 0;
};
