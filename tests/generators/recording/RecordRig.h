// A recorder without threads, in a folder and at a time of the test's own.
#pragma once

#include "generators/recording/BufferFiles.h"
#include "generators/recording/RecordWriter.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class RecordRig final {
public:
    using Writer = Backend::Recording::RecordWriter;

    explicit RecordRig(const Backend::Recording::RecordLimits& limits = {}) { start(limits); }

    void start(const Backend::Recording::RecordLimits& limits) {
        writer.reset();
        writer = std::make_unique<Writer>(
            buffers(), limits,
            Backend::Recording::RecordClocks{[this] { return now; }, [this] { return calendar + now; }},
            [this](const std::string& remark) { remarks.push_back(remark); });
    }
    // A message some milliseconds after the last one: status with channel, data.
    void play(std::uint32_t after, std::uint32_t status, std::uint32_t d1 = 0, std::uint32_t d2 = 0) {
        now += after;
        const auto type = Backend::MidiEngine::fixStatus(static_cast<Backend::MidiEngine::MessageType>(status));
        const auto size = static_cast<std::uint32_t>(Backend::MidiEngine::dataByteCount(type)) + 1;
        writer->record({now, status | d1 << 8 | d2 << 16 | size << 24});
    }
    void flush() {
        writer->resume(now);
        writer->flush(now);
    }
    [[nodiscard]] std::filesystem::path buffers() const {
        std::filesystem::create_directories(folder.path() / "buffers");
        return folder.path() / "buffers";
    }
    [[nodiscard]] std::filesystem::path target() const { return folder.path() / "out.mid"; }
    // Of all buffers, oldest first.
    [[nodiscard]] std::vector<std::string> contents() const {
        std::vector<std::string> contents;
        for (const auto& file : Backend::Recording::BufferFiles::list(folder.path() / "buffers")) {
            contents.push_back(TestSupport::contentOf(file));
        }
        return contents;
    }

    TemporaryFolder folder;
    std::uint32_t now = 4'294'966'000; // the clock wraps soon
    std::int64_t calendar = 1'700'000'000'000;
    std::vector<std::string> remarks;
    std::unique_ptr<Writer> writer;
};
