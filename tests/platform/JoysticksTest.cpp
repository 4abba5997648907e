#include "platform/Joysticks.h"

#include <gtest/gtest.h>

namespace {

using namespace Platform;

// What a machine that runs tests has is not known, but reading it must be safe and must give the same twice.
TEST(Joysticks, ReadWhatIsThereAgainAndAgain) {
    for (int opening = 0; opening < 2; ++opening) {
        const auto joysticks = openJoysticks();
        const JoystickPositions first = joysticks->read();
        const JoystickPositions second = joysticks->read();
        for (std::size_t i = 0; i < joystickCount; ++i) {
            EXPECT_EQ(first[i].has_value(), second[i].has_value()) << i;
        }
    }
}

} // namespace
