#include "host/live/PortArrangement.h"

#include <algorithm>

namespace Host {

namespace {

// The named ones, by wish; then our own; then the rest, each once for each time it is there.
std::vector<std::string> inOrder(const std::vector<std::string>& names, const std::vector<std::string>& wishes,
                                 const std::string& ownPort) {
    std::vector<std::string> ordered;
    std::vector<bool> taken(names.size(), false);
    const auto take = [&](auto wanted) {
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (!taken[i] && wanted(names[i])) {
                taken[i] = true;
                ordered.push_back(names[i]);
            }
        }
    };
    for (const std::string& wish : wishes) {
        take([&](const std::string& name) { return isNamed(name, {wish}); });
    }
    take([&](const std::string& name) { return name == ownPort; });
    take([](const std::string&) { return true; });
    return ordered;
}

Platform::Outcome checkWishes(const std::vector<std::string>& names, const std::vector<std::string>& wishes,
                              const char* kind) {
    for (const std::string& wish : wishes) {
        if (std::none_of(names.begin(), names.end(), [&](const std::string& name) { return isNamed(name, {wish}); })) {
            return Platform::Fault{{}, 0, std::string("there is no MIDI ") + kind + " named \"" + wish + "\""};
        }
    }
    return Platform::success();
}

} // namespace

bool PortArrangement::wantsInput(const std::string& name) const {
    return !wishes.onlyList && (name == ownPort || wishes.everyInput ||
                                (wishes.inputs.empty() ? opensDevices : isNamed(name, wishes.inputs)));
}

bool PortArrangement::wantsOutput(const std::string& name) const {
    return wishes.anyOutput && !wishes.onlyList && (name == ownPort || isNamed(name, wishes.outputs));
}

Platform::Outcome PortArrangement::arrange(PortRoster& inputs, const std::vector<std::string>& inputNames,
                                           PortRoster& outputs, const std::vector<std::string>& outputNames) const {
    if (const auto there = checkWishes(inputNames, wishes.inputs, "input"); !there) {
        return there;
    }
    if (const auto there = checkWishes(outputNames, wishes.outputs, "output"); !there) {
        return there;
    }
    update(inputs, inOrder(inputNames, wishes.inputs, ownPort), outputs, inOrder(outputNames, wishes.outputs, ownPort));
    // Where no port is our own, the program still is to be heard somewhere.
    const auto& ports = outputs.ports();
    if (wishes.anyOutput && !wishes.onlyList && opensDevices && !ports.empty() &&
        std::none_of(ports.begin(), ports.end(), [](const PortRoster::Port& port) { return port.wanted; })) {
        const auto named = std::find_if(ports.begin(), ports.end(),
                                        [](const PortRoster::Port& port) { return isNamed(port.name, {"Tembrel"}); });
        outputs.at(named == ports.end() ? 0 : static_cast<int>(named - ports.begin())).wanted = true;
    }
    return Platform::success();
}

bool PortArrangement::update(PortRoster& inputs, const std::vector<std::string>& inputNames, PortRoster& outputs,
                             const std::vector<std::string>& outputNames) const {
    const auto knownInputs = static_cast<int>(inputs.ports().size());
    const auto knownOutputs = static_cast<int>(outputs.ports().size());
    const PortRoster::Changes in = inputs.update(inputNames);
    const PortRoster::Changes out = outputs.update(outputNames);
    for (const int place : in.appeared) {
        if (place >= knownInputs) {
            inputs.at(place).wanted = wantsInput(inputs.at(place).name);
        }
    }
    for (const int place : out.appeared) {
        if (place >= knownOutputs) {
            outputs.at(place).wanted = wantsOutput(outputs.at(place).name);
        }
    }
    return in.any() || out.any();
}

} // namespace Host
