// The line at the bottom of a terminal that says how things are.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

namespace Backend {
class QelIF;
}

namespace Host {

class LivePlayer;

// Redrawn in place when it has changed, as much of it as the terminal is wide. Used by one thread, which is not the
// backend's.
class StatusLine final {
public:
    // Between two drawings.
    static constexpr std::chrono::milliseconds interval{100};

    // All outlive the object.
    StatusLine(std::FILE* terminal, Backend::QelIF& qel, const LivePlayer& player);
    ~StatusLine(); // leaves the cursor on a line of its own
    StatusLine(const StatusLine&) = delete;
    StatusLine& operator=(const StatusLine&) = delete;

    // Too early, it does nothing. `written` is how much others have written into the terminal: when it has changed, the
    // line is drawn again.
    void update(std::uint64_t written);
    // Takes the line away, for something else to be written. The next update() puts it back.
    void clear();

private:
    [[nodiscard]] std::string text() const;

    std::FILE* terminal_;
    Backend::QelIF& qel_;
    const LivePlayer& player_;
    std::string shown_;
    std::uint64_t written_ = 0;
    std::chrono::nanoseconds next_{};
};

} // namespace Host
