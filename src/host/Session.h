// The backend from its creation to its end, as a verb of the command line needs it.
#pragma once

#include "core/QelIF.h"
#include "platform/Result.h"
#include "values/MidiPort.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Backend::MidiEngine {
class MidiPlayer;
}
namespace Backend::MidiInput {
struct InputSteps;
}

namespace Host {

// What a session begins with; what is not given stays as the backend has it.
struct SessionOptions {
    std::optional<std::string> program; // a file
    std::optional<std::string> bank;    // a file
    std::optional<int> slot;            // of the bank, 0-based
    std::optional<int> tempo;           // beats a minute, 10..500
    std::optional<std::string> data;    // folder of application data and settings; the user's own without it
    bool joysticks = false;             // they are looked for and play
    bool defaultBank = false;           // without a bank: starts with the user's
    bool records = false;               // what is played is recorded, unless the settings forbid it
    // Told how each incoming message was handled; empty: nobody asks. [backend]
    std::function<void(const Backend::MidiInput::InputSteps&)> explainInput{};
};

// All on one thread, which is not the backend's.
class Session final {
public:
    // `player` outlives the session.
    Session(Backend::MidiEngine::MidiPlayer& player, const SessionOptions& options);
    // As end(); then the backend is gone, and nobody may call it or its engine any more.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Creates and initialises the backend with these ports, loads what the options name and waits until it is in
    // place. The first file that cannot be read, or the slot that there is not, is the fault; the session can only be
    // destroyed then. A default bank that cannot be read is left to takeFaults(). Once.
    [[nodiscard]] Platform::Outcome start(const std::vector<Backend::MidiInputPort>& inputs,
                                          const std::vector<Backend::MidiOutputPort>& outputs);

    // Only after a start() that succeeded.
    [[nodiscard]] Backend::QelIF& qel() { return *qel_; }

    // Ends the backend: threads, files, settings. Until it is back, who waits for a time slice may still need one.
    // Harmless when repeated.
    void end();

    // What has been remarked on since the last call, such as that the record pauses. [any]
    [[nodiscard]] std::vector<std::string> takeRemarks();
    // Files that could not be read or written since the last call. [any]
    [[nodiscard]] std::vector<Platform::Fault> takeFaults();

private:
    void load();
    void waitForBackend();
    [[nodiscard]] std::optional<Platform::Fault> wrongSlot();

    Backend::MidiEngine::MidiPlayer& player_;
    SessionOptions options_;
    std::mutex faultMutex_;
    std::vector<Platform::Fault> faults_;
    std::vector<std::string> remarks_;
    std::unique_ptr<Backend::QelIF> qel_;
    bool ended_ = false;
};

} // namespace Host
