// All that a live run prints of what it plays.
#pragma once

#include "host/live/EventPrinter.h"
#include "host/live/TextPrinter.h"
#include "midiinput/InputSteps.h"
#include "platform/Result.h"
#include "values/Ticks.h"

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Host {

class LivePlayer;

// Where played events are printed to; several targets that are the same are one. All calls on the main thread.
class EventPrinters final {
public:
    // `target` is a file, or "-" for standard output.
    [[nodiscard]] Platform::Outcome add(const std::string& target);
    // What was added outlives the player's clock.
    void attachTo(LivePlayer& player);
    // Lines count their ticks from here.
    void setStart(Backend::Ticks start);

    // Prints what becomes of the messages that arrive, to standard output. What it gives may be called until finish().
    [[nodiscard]] std::function<void(const Backend::MidiInput::InputSteps&)> explanations(LivePlayer& player);

    // A fault once a line could not be written.
    [[nodiscard]] Platform::Outcome state() const;
    // How many times something was written.
    [[nodiscard]] std::uint64_t written() const;

    // When nothing plays any more: what is still to be written is written, and what was lost is said on standard error.
    void finish();

private:
    struct FileCloser {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    using OpenFile = std::unique_ptr<std::FILE, FileCloser>;

    std::unique_ptr<TextPrinter> explanation_; // null: nobody asks
    std::vector<OpenFile> files_;
    std::vector<std::unique_ptr<EventPrinter>> printers_;
    bool printsToOutput_ = false;
};

} // namespace Host
