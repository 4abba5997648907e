#include "host/PerformanceScript.h"

namespace Host {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view withoutByteOrderMark(std::string_view text) {
    return text.starts_with(byteOrderMark) ? text.substr(byteOrderMark.size()) : text;
}

} // namespace

Platform::Result<std::unique_ptr<PerformanceScript>> PerformanceScript::open(std::string text, const std::string& name,
                                                                             int inputs) {
    std::unique_ptr<PerformanceScript> script(new PerformanceScript(std::move(text), name, inputs));
    if (const Platform::Outcome checked = script->check(script->reader_); !checked) {
        return checked.fault();
    }
    return script;
}

PerformanceScript::PerformanceScript(std::string text, const std::string& name, int inputs)
    : text_(std::move(text)), rest_(withoutByteOrderMark(text_)), reader_(name, inputs) {}

bool PerformanceScript::next(PerformanceEvent& event) {
    std::string_view line;
    while (takeLine(line)) {
        auto read = reader_.readLine(line);
        if (read && read.value()) {
            event = std::move(*read.value());
            return true;
        }
    }
    return false;
}

bool PerformanceScript::takeLine(std::string_view& line) {
    if (rest_.empty()) {
        return false;
    }
    const std::size_t end = std::min(rest_.find('\n'), rest_.size());
    line = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return true;
}

Platform::Outcome PerformanceScript::check(ScriptReader reader) {
    const std::string_view whole = rest_;
    std::string_view line;
    while (takeLine(line)) {
        if (const auto read = reader.readLine(line); !read) {
            return read.fault();
        }
    }
    rest_ = whole;
    return Platform::success();
}

} // namespace Host
