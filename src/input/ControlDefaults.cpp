#include "input/ControlDefaults.h"

#include <array>

namespace Backend::Controls {

namespace {

using MidiEngine::MessageType;
using Kind = ControlType::Kind;

struct Row {
    Cell cell;
    Kind kind;
    const char* name;
    std::int32_t value;
    std::int32_t max;
    std::int32_t release;
    std::int32_t size;
    MessageType type;
    std::int8_t controller;
};

constexpr MessageType controller = MessageType::controllerChange;
constexpr std::int32_t stays = Control::NO_RELEASE;

constexpr std::array rows{
    Row{{0, 0}, Kind::vfader, "PB", 8192, 16383, 8192, 2, MessageType::pitchBend, 0},
    Row{{0, 1}, Kind::vfader, "MW", 0, 127, stays, 2, controller, 1},
    Row{{0, 2}, Kind::vfader, "VOL", 100, 127, stays, 2, controller, 7},
    Row{{0, 3}, Kind::vfader, "SUST", 0, 127, stays, 2, controller, 64},
    Row{{0, 4}, Kind::vfader, "AFT", 0, 127, stays, 2, MessageType::channelPressure, 0},
    Row{{0, 5}, Kind::edit, "B MSB", 0, 127, stays, 1, controller, 0},
    Row{{0, 6}, Kind::edit, "B LSB", 0, 127, stays, 1, controller, 32},
    Row{{0, 7}, Kind::edit, "PROG", 0, 127, stays, 1, MessageType::programChange, 0},
    Row{{2, 0}, Kind::edit, "", 8192, 16383, stays, 1, MessageType::pitchBend, 0},
    Row{{2, 1}, Kind::edit, "", 0, 127, stays, 1, controller, 1},
    Row{{2, 2}, Kind::edit, "", 100, 127, stays, 1, controller, 7},
    Row{{2, 3}, Kind::knob, "PAN", 64, 127, 64, 1, controller, 10},
    Row{{2, 4}, Kind::edit, "", 0, 127, stays, 1, MessageType::channelPressure, 0},
};

Control controlOf(const Row& row) {
    Control control{row.cell, row.name, ControlType(row.kind), row.value, 0, row.max, row.release, false, row.size};
    control.events = {ValueEvent{MidiEngine::MidiMessage(row.type, row.controller)}};
    return control;
}

} // namespace

const ControlMap& defaultControls() {
    static const ControlMap map = [] {
        ControlMap all;
        for (const Row& row : rows) {
            all.store(row.cell, controlOf(row));
        }
        return all;
    }();
    return map;
}

} // namespace Backend::Controls
