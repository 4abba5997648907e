// How the ports of a system are put in order, and which of them are wanted.
#pragma once

#include "host/live/PortRoster.h"
#include "host/live/PortWishes.h"
#include "platform/Result.h"

#include <string>
#include <vector>

namespace Host {

// What our own ports are called in the lists.
inline constexpr const char* ownPortName = "Tembrel";

// What the user named comes first, in the order of naming, so that port 0 is the one that was asked for; then our own
// port, then the rest. Without a wish our own output and, where `opensDevices`, all inputs and one output are wanted.
struct PortArrangement {
    const PortWishes& wishes;
    std::string ownPort; // name of our own port, which is always there; empty: there is none
    bool opensDevices;   // whether devices are opened without being asked for

    // Fills two empty rosters. A fault for a wish that no port answers to.
    [[nodiscard]] Platform::Outcome arrange(PortRoster& inputs, const std::vector<std::string>& inputNames,
                                            PortRoster& outputs, const std::vector<std::string>& outputNames) const;
    // Brings both up to date; what is new is wanted or not by the same wishes. True when something changed.
    bool update(PortRoster& inputs, const std::vector<std::string>& inputNames, PortRoster& outputs,
                const std::vector<std::string>& outputNames) const;

private:
    [[nodiscard]] bool wantsInput(const std::string& name) const;
    [[nodiscard]] bool wantsOutput(const std::string& name) const;
};

} // namespace Host
