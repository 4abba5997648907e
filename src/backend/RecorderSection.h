// The retrospective record in the backend: what the engine plays goes into buffer files, on a thread of its own.
#pragma once

#include "core/RegistrySettings.h"
#include "core/Surroundings.h"
#include "core/WorkerThread.h"
#include "generators/recording/RecordFolder.h"
#include "generators/recording/RecordQueue.h"
#include "generators/recording/RecordWriter.h"
#include "generators/recording/RetroRecord.h"
#include "midiengine/EngineTap.h"

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Backend {

namespace MidiEngine {
class MidiEngine;
}

// [backend] unless marked otherwise. What the recorder's thread alone uses is touched by others only before it starts
// and after it has ended.
class RecorderSection final : public Recording::RetroRecord, private MidiEngine::EngineTap {
public:
    // All outlive the section.
    RecorderSection(MidiEngine::MidiEngine& engine, RegistrySettings& settings, const Surroundings& surroundings);

    // The folder that the settings name, or the default one.
    [[nodiscard]] static std::filesystem::path folderOf(const RegistrySettings& settings,
                                                        const Surroundings& surroundings);

    // Once the settings are loaded: starts the thread, and recording if it is wanted.
    void start();
    // Everything that was played is in the buffers, and they are closed. Harmless when repeated.
    void end();

    void enable(bool on);
    void setOlderFiles(int files);

    // What the engine tells of each message. [clock]
    [[nodiscard]] MidiEngine::EngineTap& tap() { return *this; }

    // RetroRecord. [any but clock and recorder]
    [[nodiscard]] std::filesystem::path folder() override;
    [[nodiscard]] std::vector<Recording::Take> takes() override;
    [[nodiscard]] Platform::Result<Recording::SavedRecord> save(const std::filesystem::path& target,
                                                                std::optional<int> fromLast) override;
    [[nodiscard]] std::uint64_t missed() override;

private:
    void passed(const MidiEngine::QelMidiMessage& message, bool swallowed) override;
    void listen(bool on);
    [[nodiscard]] Recording::RecordLimits limits() const;
    // Runs `work` on the recorder's thread and waits; false when there is no such thread. [any but clock and recorder]
    bool onThread(const std::function<void()>& work);

    // [recorder]
    void handle(const Platform::ThreadMessage& message);
    void openFolder();
    void lookForMessages();
    void writeMessages();

    MidiEngine::MidiEngine& engine_;
    RegistrySettings& settings_;
    const Surroundings& surroundings_;
    std::function<void(const std::string&)> remark_;

    std::mutex threadMutex_; // who uses the thread, and who makes and ends it
    std::unique_ptr<WorkerThread> thread_;
    std::unique_ptr<Recording::RecordQueue> queue_; // null until recording is first wanted
    bool tapped_ = false;

    // Of the clock.
    std::uint32_t stampedSlice_ = 0;
    std::uint32_t stamp_ = 0; // milliseconds

    // Of the recorder's thread.
    std::filesystem::path buffers_;
    Recording::RecordLimits limits_;
    std::unique_ptr<Recording::RecordFolder> folder_;
    std::unique_ptr<Recording::RecordWriter> writer_;
    std::uint32_t triedAt_ = 0;
    bool saidThatThereIsNoFolder_ = false;
    bool saidThatItIsTooSlow_ = false;
    bool looking_ = false; // a message of its own is on its way
    bool parked_ = true;
    std::uint64_t missedWithoutFolder_ = 0;
    std::atomic<std::uint64_t> missed_ = 0; // before the queue's own losses
};

} // namespace Backend
