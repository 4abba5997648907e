// Threads that are created suspended, their ids, and real-time priority.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace Platform {

// Identifies a thread of this process. 0 is no thread.
using ThreadId = std::uint32_t;

// Urgency of a thread. The real-time ones are asked for and gone without where the system refuses.
enum class Priority {
    normal,
    message, // threads that hand events on: just below the clock
    clock,   // the playback clock
};

// One thread. It exists, suspended, from construction on; it runs the body from resume() on.
class Thread final {
public:
    // Creates the thread suspended: id() is valid before the first instruction of body runs.
    // Throws std::system_error when the system has no thread to give.
    explicit Thread(std::function<void()> body);
    // Joins a thread that was resumed; a thread that never ran is discarded without running its body.
    ~Thread();
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    [[nodiscard]] ThreadId id() const noexcept; // [any]
    void resume();                              // [owner] once
    void join(); // [owner] waits for the body's end, without time-out; harmless when repeated

private:
    struct State;
    std::unique_ptr<State> state_;
};

[[nodiscard]] ThreadId currentThreadId() noexcept; // [any]

// Sleeps at least this long. 0 gives the rest of the time slice away.
void sleepMilliseconds(unsigned milliseconds) noexcept; // [any]

// Asks for a priority for the calling thread; false when the system refused and the thread goes on as it was.
bool setCurrentThreadPriority(Priority priority) noexcept; // [any]

// Name of the calling thread for debuggers; at most 15 bytes are kept.
void setCurrentThreadName(const char* name) noexcept; // [any]

} // namespace Platform
