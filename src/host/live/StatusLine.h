// The line at the bottom of a terminal that says how things are.
#pragma once

#include <cstdio>
#include <string>

namespace Host {

class LivePlayer;

// Redrawn in place when it has changed. Used by one thread.
class StatusLine final {
public:
    // `program` is what is shown as the program's name.
    StatusLine(std::FILE* terminal, std::string program, const LivePlayer& player);
    ~StatusLine(); // leaves the cursor on a line of its own
    StatusLine(const StatusLine&) = delete;
    StatusLine& operator=(const StatusLine&) = delete;

    void update();
    // Takes the line away, for something else to be written. The next update() puts it back.
    void clear();

private:
    [[nodiscard]] std::string text() const;

    std::FILE* terminal_;
    std::string program_;
    const LivePlayer& player_;
    std::string shown_;
};

} // namespace Host
