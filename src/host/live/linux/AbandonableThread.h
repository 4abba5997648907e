// A thread for calls into somebody else's code that may never come back.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace Host {

// Runs at once. Its owner waits for it as long as he likes; then it goes on by itself, so all that the work uses has to
// be the work's own, too.
class AbandonableThread final {
public:
    explicit AbandonableThread(std::function<void()> work);
    ~AbandonableThread(); // does not wait
    AbandonableThread(const AbandonableThread&) = delete;
    AbandonableThread& operator=(const AbandonableThread&) = delete;

    // True as soon as the work is done, false when it is not after that time. [owner]
    [[nodiscard]] bool isDoneWithin(std::chrono::nanoseconds patience);

private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace Host
