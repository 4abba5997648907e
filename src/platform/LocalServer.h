// Questions and answers between processes of one user on one machine.
#pragma once

#include "platform/Result.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Platform {

// No longer question or answer is taken.
inline constexpr std::size_t longestLocalText = 1 << 20;

// Serves a name, of letters, digits and dashes. Only processes of the same user reach it: on Linux a socket in a folder
// of the user's runtime folder that is nobody else's, on Windows a named pipe that only the user may open.
class LocalServer final {
public:
    using Answer = std::function<std::string(const std::string& question)>;

    // From now on `answer` is called for each question, one after the other, on a thread of the server's own. state()
    // says why that failed; a name that another process serves is a fault.
    LocalServer(const std::string& name, Answer answer);
    // Ends the answer at hand first; waiting questions stay without one.
    ~LocalServer();
    LocalServer(const LocalServer&) = delete;
    LocalServer& operator=(const LocalServer&) = delete;

    [[nodiscard]] const Outcome& state() const noexcept;

private:
    struct State;
    std::unique_ptr<State> state_;
};

// Asks whoever serves the name and waits for the answer, at most that long; nothing when nobody does. [any]
[[nodiscard]] Result<std::optional<std::string>> askLocalServer(const std::string& name, const std::string& question,
                                                                std::chrono::milliseconds patience);

} // namespace Platform
