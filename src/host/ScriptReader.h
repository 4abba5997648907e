// The lines of a performance script, one by one.
#pragma once

#include "host/Performance.h"
#include "platform/Result.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Host {

// The longest line, without its end.
inline constexpr std::size_t longestScriptLine = 64 * 1024;

// Reads UTF-8 lines of the form "TICK VERB ...", each checked for itself and against those before it.
class ScriptReader final {
public:
    // `name` is the file of the faults. Messages on ports from `inputs` on are a fault.
    ScriptReader(std::string name, int inputs) : name_(std::move(name)), inputs_(inputs) {}

    // The event of the next line, which comes without its end of line (a carriage return there is passed over).
    // Nothing for a line that is blank or all comment. After a fault the reader can go on with the line behind it.
    [[nodiscard]] Platform::Result<std::optional<PerformanceEvent>> readLine(std::string_view line);

    // Of the line read last, counted from 1.
    [[nodiscard]] int lineNumber() const noexcept { return lineNumber_; }

private:
    std::string name_;
    int inputs_;
    int lineNumber_ = 0;
    std::int32_t tick_ = 0;
    bool ended_ = false;
};

} // namespace Host
