// Minutes of random play one after the other; between them it looks at the laws of the house.
#pragma once

#include "RandomEdits.h"
#include "RandomPlay.h"
#include "SoundingSink.h"
#include "host/Performance.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Backend {
class QelIF;
}

namespace Soak {

struct SoakSetting {
    std::uint64_t seed = 1;
    int minutes = 1;
    std::filesystem::path data;
    int inputs = 2;
    int outputs = 3;
};

// Handed to a renderer, which waits for all that was posted before it plays the next event: so edits are posted between
// two events that wait, and the same seed plays the same.
class SoakPerformance final : public Host::Performance {
public:
    // All outlive the performance; the backend has started in the folder of the setting.
    SoakPerformance(SoakSetting setting, Backend::QelIF& qel, SoundingSink& sink);

    bool next(Host::PerformanceEvent& event) override;
    // The law that does not hold.
    [[nodiscard]] const std::optional<std::string>& broken() const { return broken_; }

private:
    // What has been given before a stage begins has been played by then.
    enum class Stage {
        play,
        stop,    // all is let go; what sounds on by itself is stopped
        silence, // what still sounds is broken
        files,   // ... and saved files that are not as they must be
        bank,
    };

    // Gives what comes next, or false at the end.
    bool beginStage();
    void play();
    void edit();
    void stop();
    bool checkSilence();
    void saveAndLoad();
    bool checkFiles();
    bool checkBank();
    bool checkMemory();
    void unplug(int output);
    void plug();
    bool fail(const std::string& what);
    void report() const;
    [[nodiscard]] std::int32_t endOfMinute() const;
    [[nodiscard]] std::int32_t startOfMinute() const;

    SoakSetting setting_;
    Backend::QelIF& qel_;
    SoundingSink& sink_;
    RandomPlay play_;
    RandomEdits edits_;
    Stage stage_ = Stage::play;
    int minute_ = 0;
    long memoryAtTen_ = 0; // KiB
    std::vector<int> unplugged_;
    std::vector<Host::PerformanceEvent> events_;
    std::size_t next_ = 0;
    bool editIsDue_ = false; // at the next event; all that was played before it has been done by then
    std::size_t edited_ = 0; // events before the latest edit
    std::string before_;
    std::string after_;
    std::optional<std::string> broken_;
};

} // namespace Soak
