// Whatever is done to the window: no crash, and silence in the end.
//   TEMBREL_RANDOM_SECONDS=300 TEMBREL_RANDOM_SEED=7 build/dev/bin/tests_desktop --gtest_filter='RandomHands*'
#include "desktop/RandomHands.h"

#include <QElapsedTimer>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>

namespace {

int numberIn(const char* variable, int otherwise) {
    const char* const text = std::getenv(variable);
    return text != nullptr ? std::atoi(text) : otherwise;
}

TEST(RandomHandsOnTheWindow, DoNoHarmAndEndInSilence) {
    const int seed = numberIn("TEMBREL_RANDOM_SEED", 20261121);
    const qint64 milliseconds = 1000 * numberIn("TEMBREL_RANDOM_SECONDS", 0);
    SCOPED_TRACE("seed " + std::to_string(seed));
    DesktopRig rig;
    for (std::size_t i = 0; i < Gui::panelCount; ++i) {
        rig.after([&] { rig.window().showPanel(static_cast<Gui::Panel>(i), true); });
    }
    RandomHands hands(rig, static_cast<unsigned>(seed));
    constexpr int least = 300;
    int count = 0;
    bool sounded = false;
    QElapsedTimer timer;
    for (timer.start(); count < least || timer.elapsed() < milliseconds; ++count) {
        hands.act();
        if (count % 16 == 0) {
            rig.backend.afterMidi(0x90, 40 + count % 48, 100);
        } else if (count % 16 == 8) {
            rig.backend.afterMidi(0x80, 40 + (count - 8) % 48, 64);
        }
        sounded = sounded || !rig.backend.player.sounding().empty();
        ASSERT_TRUE(rig.window().isVisible()) << "after " << hands.last();
    }
    hands.rest();
    rig.after([&] { rig.window().panic(); });
    EXPECT_TRUE(sounded);
    EXPECT_TRUE(rig.backend.player.sounding().empty());
    for (int tick = 0; tick < 200; ++tick) {
        rig.after([] {});
    }
    EXPECT_TRUE(rig.backend.player.sounding().empty()) << "nothing begins by itself";
    if (milliseconds > 0) {
        std::cout << count << " deeds\n";
    }
}

} // namespace
