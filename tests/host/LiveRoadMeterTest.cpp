// What an event takes through the program, on virtual time.
#include "host/LiveFakes.h"
#include "host/live/RoadMeter.h"

#include <gtest/gtest.h>

namespace Host {
namespace {

using namespace std::chrono_literals;

class RoadMeterTest : public ::testing::Test {
protected:
    void probe(std::chrono::nanoseconds toEngine, std::chrono::nanoseconds toTick) {
        ASSERT_TRUE(meter.begin());
        EXPECT_FALSE(meter.begin()) << "one at a time";
        meter.tickPlayed(); // one that has not reached the engine is not played
        time.pass(toEngine);
        meter.reachedEngine();
        time.pass(toTick);
        meter.tickPlayed();
        meter.tickPlayed(); // once
    }
    VirtualTime time;
    RoadMeter meter{time};
};

TEST_F(RoadMeterTest, IsTheWholeWayAndWhatItDiffersBy) {
    EXPECT_LT(meter.reading({}).latencyMs, 0) << "not known yet";
    probe(100us, 300us);
    EXPECT_NEAR(meter.reading({}).latencyMs, 0.4, 1e-6);
    EXPECT_NEAR(meter.reading({}).jitterMs, 0, 1e-6);
    probe(500us, 300us);
    EXPECT_NEAR(meter.reading({}).latencyMs, 0.6, 1e-6);
    EXPECT_NEAR(meter.reading({}).jitterMs, 0.4, 1e-6);
    for (int i = 0; i < 16; ++i) {
        probe(1ms, 1ms);
    }
    EXPECT_NEAR(meter.reading({}).latencyMs, 2, 1e-6) << "of the latest";
}

TEST_F(RoadMeterTest, WhatIsKeptForAConstantTimeJittersOnlyWhereItIsLate) {
    probe(200us, 100us);
    probe(400us, 100us);
    EXPECT_NEAR(meter.reading(1333us).latencyMs, 1.333, 1e-6);
    EXPECT_NEAR(meter.reading(1333us).jitterMs, 0, 1e-6);
    probe(2ms, 0us);
    EXPECT_NEAR(meter.reading(1333us).jitterMs, 0.667, 1e-6);
}

} // namespace
} // namespace Host
