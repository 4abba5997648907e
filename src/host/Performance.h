// What a performance consists of, whatever file it comes from.
#pragma once

#include "values/Cell.h"

#include <cstdint>
#include <string>
#include <variant>

namespace Host {

// The latest tick that an event may stand at, counted from the start.
inline constexpr std::int32_t latestTick = 2'000'000'000;

// A message arrives on an input port. Status with channel; data the message does not have are 0.
struct MidiArrives {
    std::uint8_t port = 0;
    std::uint8_t status = 0;
    std::uint8_t d1 = 0;
    std::uint8_t d2 = 0;
};
enum class Press { down, repeat, up };
// A key of the computer's keyboard, by its full name.
struct KeyMoves {
    Press press = Press::down;
    std::string name;
};
// An on-screen control is moved.
struct ControlMoves {
    Cell cell;
    std::int32_t value = 0;
};
// `axis` 0..5 in the order of the letters X, Y, Z, U, V, R; `raw` 0..65535 as the device gives it.
struct AxisMoves {
    std::uint8_t joystick = 0;
    std::uint8_t axis = 0;
    std::uint16_t raw = 0;
};
struct ButtonMoves {
    Press press = Press::down;
    std::uint8_t joystick = 0;
    std::uint8_t button = 0; // 0..31
};
struct ExecuteFunction {
    std::string xml;
};
struct ExecuteTranslation {
    MidiArrives incoming;
    std::string xml;
};
struct SetTempo {
    int beatsPerMinute = 120; // 10..500
};
struct ResetAll {};
// Rendering stops before the tick of this event is played.
struct EndOfPerformance {};

struct PerformanceEvent {
    std::int32_t tick = 0; // from the start, 0..latestTick
    std::variant<MidiArrives, KeyMoves, ControlMoves, AxisMoves, ButtonMoves, ExecuteFunction, ExecuteTranslation,
                 SetTempo, ResetAll, EndOfPerformance>
        what;
};

// A performance that has been checked as a whole: it gives its events in order of time and never fails.
class Performance {
public:
    virtual ~Performance() = default;
    // The next event; false at the end, which leaves `event` as it is.
    [[nodiscard]] virtual bool next(PerformanceEvent& event) = 0;
};

} // namespace Host
