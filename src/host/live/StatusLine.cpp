#include "host/live/StatusLine.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "host/live/LivePlayer.h"
#include "host/live/StatusText.h"
#include "host/live/Terminal.h"
#include "platform/Clocks.h"

namespace Host {

namespace {

template <typename Port> std::vector<std::string> openPorts(const std::vector<Port>& ports) {
    std::vector<std::string> names;
    for (const Port& port : ports) {
        if (port.enabled) {
            names.push_back(port.name);
        }
    }
    return names;
}

} // namespace

StatusLine::StatusLine(std::FILE* terminal, Backend::QelIF& qel, const LivePlayer& player)
    : terminal_(terminal), qel_(qel), player_(player) {
    qel_.getQelMessageManager().postPublishStatus();
}

StatusLine::~StatusLine() {
    if (!shown_.empty()) {
        std::fputc('\n', terminal_);
    }
}

std::string StatusLine::text() const {
    const StatusContent content{qel_.getStatus(),
                                player_.tempo(),
                                player_.hasBeat(),
                                player_.heldNotes(),
                                openPorts(player_.system().inputs()),
                                openPorts(player_.system().outputs())};
    return fitted(statusText(content), terminalColumns() - 1);
}

void StatusLine::update(std::uint64_t written) {
    const auto now = Platform::monotonicTime();
    if (now < next_) {
        return;
    }
    next_ = now + interval;
    std::string current = text();
    qel_.getQelMessageManager().postPublishStatus(); // for the next time
    if (current == shown_ && written == written_) {
        return;
    }
    std::fprintf(terminal_, "%s%s", lineEraser().c_str(), current.c_str());
    std::fflush(terminal_);
    shown_ = std::move(current);
    written_ = written;
}

void StatusLine::clear() {
    if (!shown_.empty()) {
        std::fputs(lineEraser().c_str(), terminal_);
        shown_.clear();
    }
}

} // namespace Host
