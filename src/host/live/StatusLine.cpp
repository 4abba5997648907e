#include "host/live/StatusLine.h"

#include "host/live/LivePlayer.h"

namespace Host {

namespace {

template <typename Port> std::string openPorts(const std::vector<Port>& ports) {
    std::string names;
    for (const Port& port : ports) {
        if (port.enabled) {
            names += (names.empty() ? "" : ", ") + port.name;
        }
    }
    return names.empty() ? "none" : names;
}

} // namespace

StatusLine::StatusLine(std::FILE* terminal, std::string program, const LivePlayer& player)
    : terminal_(terminal), program_(std::move(program)), player_(player) {}

StatusLine::~StatusLine() {
    if (!shown_.empty()) {
        std::fputc('\n', terminal_);
    }
}

std::string StatusLine::text() const {
    return program_ + " | " + std::to_string(player_.tempo()) + " BPM | in: " + openPorts(player_.system().inputs()) +
           " | out: " + openPorts(player_.system().outputs()) + " | " + std::to_string(player_.heldNotes()) +
           " notes held";
}

void StatusLine::update() {
    std::string now = text();
    if (now == shown_) {
        return;
    }
    const std::size_t rest = shown_.size() > now.size() ? shown_.size() - now.size() : 0;
    std::fprintf(terminal_, "\r%s%s", now.c_str(), std::string(rest, ' ').c_str());
    std::fflush(terminal_);
    shown_ = std::move(now);
}

void StatusLine::clear() {
    if (!shown_.empty()) {
        std::fprintf(terminal_, "\r%s\r", std::string(shown_.size(), ' ').c_str());
        shown_.clear();
    }
}

} // namespace Host
