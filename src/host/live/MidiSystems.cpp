#include "host/live/MidiSystems.h"

#include "host/live/JackHost.h"
#include "host/live/NoSystem.h"
#include "host/live/RtMidiHost.h"
#include "host/live/RtMidiSystem.h"

#include <chrono>
#include <cstring>
#include <string>
#include <vector>

namespace Host {

using namespace std::chrono_literals;
using Platform::Fault;
using Platform::Result;

namespace {

// A server that is there answers within some milliseconds; one that hangs is not waited for.
constexpr std::chrono::nanoseconds patienceWhenAsked = 2s;
constexpr std::chrono::nanoseconds patienceWhenLooking = 500ms;

std::string portsOf(const MidiSystem& system) {
    const auto count = [](const auto& ports) {
        int open = 0;
        for (const auto& port : ports) {
            open += port.enabled ? 1 : 0;
        }
        return std::to_string(open) + " of " + std::to_string(ports.size());
    };
    return count(system.inputs()) + " inputs and " + count(system.outputs()) + " outputs open";
}

// Without a system ports exist in name only: those that were wished for, or one of each.
std::unique_ptr<MidiSystem> openNone(const PortWishes& wishes) {
    using Names = std::vector<std::string>;
    return std::make_unique<NoSystem>(wishes.inputs.empty() ? Names{"In 1"} : wishes.inputs,
                                      wishes.outputs.empty() ? Names{"Out 1"} : wishes.outputs);
}

FoundMidiSystem found(std::unique_ptr<MidiSystem> system) {
    std::string remark = "MIDI system: " + system->name() + ", " + portsOf(*system);
    return {std::move(system), false, std::move(remark)};
}

Result<FoundMidiSystem> openRtMidi(const PortWishes& wishes) {
    auto system = RtMidiSystem::open(wishes);
    if (!system) {
        return system.fault();
    }
    return found(std::move(system.value()));
}

bool isRtMidi(MidiSystemKind kind) {
    return std::strcmp(rtMidiHost().name, kind == MidiSystemKind::alsa ? "ALSA" : "WinMM") == 0;
}

Result<FoundMidiSystem> openAsked(MidiSystemKind kind, const PortWishes& wishes) {
    switch (kind) {
    case MidiSystemKind::jack:
        if (auto system = openJack(wishes, patienceWhenAsked); !system) {
            return system.fault();
        } else if (system.value()) {
            return found(std::move(system.value()));
        }
        return Fault{{}, 0, "there is no JACK server that answers"};
    case MidiSystemKind::alsa:
    case MidiSystemKind::winmm:
        if (!isRtMidi(kind)) {
            return Fault{{},
                         0,
                         kind == MidiSystemKind::alsa ? "there is no ALSA on this system"
                                                      : "there is no WinMM on this system"};
        }
        return openRtMidi(wishes);
    case MidiSystemKind::none:
        break;
    }
    return FoundMidiSystem{openNone(wishes), true, "MIDI system: none, playing to the monitor"};
}

// The fault of a system that is there but cannot meet a wish is the user's to hear; one that is not there is passed.
Result<FoundMidiSystem> openFirst(const PortWishes& wishes) {
    if (auto jack = openJack(wishes, patienceWhenLooking); !jack) {
        return jack.fault();
    } else if (jack.value()) {
        return found(std::move(jack.value()));
    }
    Result<std::unique_ptr<RtMidiSystem>> system = Fault{};
    if (rtMidiHost().isThere()) {
        system = RtMidiSystem::open(wishes);
    }
    if (system && (rtMidiHost().virtualPorts || system.value()->hasPorts())) {
        return found(std::move(system.value()));
    }
    return FoundMidiSystem{openNone(wishes), true, "MIDI system: none found, playing to the monitor"};
}

} // namespace

Result<FoundMidiSystem> findMidiSystem(std::optional<MidiSystemKind> asked, const PortWishes& wishes) {
    return asked ? openAsked(*asked, wishes) : openFirst(wishes);
}

std::vector<std::unique_ptr<MidiSystem>> findMidiSystems(const PortWishes& wishes) {
    std::vector<std::unique_ptr<MidiSystem>> systems;
    if (auto jack = openJack(wishes, patienceWhenAsked); jack && jack.value()) {
        systems.push_back(std::move(jack.value()));
    }
    if (rtMidiHost().isThere()) {
        if (auto system = RtMidiSystem::open(wishes)) {
            systems.push_back(std::move(system.value()));
        }
    }
    return systems;
}

} // namespace Host
