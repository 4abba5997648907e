#include "host/ScriptReader.h"

#include "host/ScriptLine.h"
#include "platform/Utf8.h"

namespace Host {

namespace {

bool isBlank(char character) {
    return character == ' ' || character == '\t';
}

// A "#" at the start or after a blank starts a comment.
std::string_view withoutComment(std::string_view line) {
    for (std::size_t at = line.find('#'); at != std::string_view::npos; at = line.find('#', at + 1)) {
        if (at == 0 || isBlank(line[at - 1])) {
            return line.substr(0, at);
        }
    }
    return line;
}

} // namespace

Platform::Result<std::optional<PerformanceEvent>> ScriptReader::readLine(std::string_view line) {
    ++lineNumber_;
    const auto fault = [this](std::string reason) { return Platform::Fault{name_, lineNumber_, std::move(reason)}; };
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    if (line.size() > longestScriptLine) {
        return fault("a line of more than " + std::to_string(longestScriptLine) + " bytes");
    }
    if (!Platform::isUtf8(line)) {
        return fault("not UTF-8");
    }
    const std::string_view text = withoutComment(line);
    if (text.find_first_not_of(" \t") == std::string_view::npos) {
        return std::optional<PerformanceEvent>();
    }
    if (ended_) {
        return fault("a line behind \"end\"");
    }
    PerformanceEvent event;
    ScriptLine content(text, inputs_);
    if (!content.read(event)) {
        return fault(content.reason());
    }
    if (event.tick < tick_) {
        return fault("tick " + std::to_string(event.tick) + " behind tick " + std::to_string(tick_));
    }
    tick_ = event.tick;
    ended_ = std::holds_alternative<EndOfPerformance>(event.what);
    return std::optional<PerformanceEvent>(std::move(event));
}

} // namespace Host
