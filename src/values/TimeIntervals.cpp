#include "values/TimeIntervals.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct Interval {
    std::int32_t ticks;
    std::string_view name;
};

constexpr std::array intervals{
    Interval{30720, "16 Whole"},  Interval{15360, "8 Whole"},      Interval{7680, "4 Whole"},
    Interval{3840, "2 Whole"},    Interval{2880, "Whole Dotted"},  Interval{1920, "Whole"},
    Interval{1440, "1/2 Dotted"}, Interval{1280, "Whole Triplet"}, Interval{960, "1/2"},
    Interval{720, "1/4 Dotted"},  Interval{640, "1/2 Triplet"},    Interval{480, "1/4"},
    Interval{360, "1/8 Dotted"},  Interval{320, "1/4 Triplet"},    Interval{240, "1/8"},
    Interval{180, "1/16 Dotted"}, Interval{160, "1/8 Triplet"},    Interval{120, "1/16"},
    Interval{90, "1/32 Dotted"},  Interval{80, "1/16 Triplet"},    Interval{60, "1/32"},
    Interval{40, "1/32 Triplet"},
};

} // namespace

std::string timeIntervalName(std::int32_t ticks) {
    const auto* const found = std::find_if(intervals.begin(), intervals.end(),
                                           [ticks](const Interval& interval) { return interval.ticks == ticks; });
    return found == intervals.end() ? std::to_string(ticks) : std::string(found->name);
}
