// One fader, knob, number field or label on screen.
#pragma once

#include "input/ValueEvent.h"
#include "values/Cell.h"
#include "values/ControlType.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Backend::Controls {

struct Control {
    static constexpr std::int32_t NO_RELEASE = -1;

    Cell cell;
    std::string name{}; // the caption
    ControlType type{};
    std::int32_t value = 0;
    std::int32_t min = 0; // above max: the control is upside down
    std::int32_t max = 127;
    std::int32_t release = NO_RELEASE; // the value to which it springs back when it is let go
    bool autoSend = false;             // its value is sent when the program has started
    std::int32_t size = 1;             // cells that the widget spans
    std::vector<ValueEvent> events{};  // sent in this order

    // The nearest value of the range.
    [[nodiscard]] std::int32_t clamped(std::int32_t number) const noexcept;
    // Every control takes part in comparisons: it can be seen, whatever it sends.
    [[nodiscard]] std::optional<Control> activePart() const { return *this; }
    friend bool operator==(const Control&, const Control&) = default;
};

} // namespace Backend::Controls
