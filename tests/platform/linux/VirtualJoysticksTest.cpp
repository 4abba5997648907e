// The service over joysticks that SDL makes up.
#include "platform/Joysticks.h"
#include "platform/linux/SdlLibrary.h"

#include <gtest/gtest.h>

namespace {

using namespace Platform;
using Axes = std::array<std::uint16_t, JoystickPosition::axisCount>;

class VirtualJoysticks : public testing::Test {
protected:
    // One joystick that is moved by the test; unplugged at its end.
    class Device final {
    public:
        Device(const SdlLibrary& sdl, int axes, int buttons)
            : sdl_(sdl),
              instance_(sdl.instanceOfDevice(sdl.attachVirtual(SDL_JOYSTICK_TYPE_FLIGHT_STICK, axes, buttons, 0))) {}
        ~Device() { unplug(); }
        Device(const Device&) = delete;
        Device& operator=(const Device&) = delete;

        // Once the service has opened it.
        void setAxis(int axis, int value) {
            EXPECT_EQ(sdl_.setVirtualAxis(sdl_.fromInstance(instance_), axis, static_cast<Sint16>(value)), 0);
        }
        void setButton(int button, bool down) {
            EXPECT_EQ(sdl_.setVirtualButton(sdl_.fromInstance(instance_), button, down ? 1 : 0), 0);
        }
        void unplug() {
            for (int device = 0; device < sdl_.count(); ++device) {
                if (sdl_.instanceOfDevice(device) == instance_) {
                    sdl_.detachVirtual(device);
                }
            }
        }

    private:
        const SdlLibrary& sdl_;
        SDL_JoystickID instance_;
    };

    void SetUp() override {
        if (sdl == nullptr || sdl->attachVirtual == nullptr) {
            GTEST_SKIP() << "no SDL with virtual joysticks";
        }
        joysticks = openJoysticks();
        if (joysticks->read()[0]) {
            GTEST_SKIP() << "this machine has real ones";
        }
    }

    const SdlLibrary* sdl = SdlLibrary::get();
    std::unique_ptr<Joysticks> joysticks;
};

TEST_F(VirtualJoysticks, AxesSpanTheRecordExactly) {
    struct Row {
        int sdl;
        int raw;
    };
    const Row rows[] = {{0, 32768}, {-32768, 0}, {32767, 65535}, {-1, 32767}, {-32767, 1}};
    Device device(*sdl, 6, 4);
    EXPECT_EQ(joysticks->read()[0], (JoystickPosition{{32768, 32768, 32768, 32768, 32768, 32768}, 0}));
    for (int axis = 0; axis < 6; ++axis) {
        for (const Row& row : rows) {
            device.setAxis(axis, row.sdl);
            EXPECT_EQ(joysticks->read()[0].value().axes[static_cast<std::size_t>(axis)], row.raw) << axis;
        }
    }
    EXPECT_EQ(joysticks->read()[0].value().axes, (Axes{1, 1, 1, 1, 1, 1}));
    EXPECT_FALSE(joysticks->read()[1]);
}

TEST_F(VirtualJoysticks, ButtonsAreBits) {
    Device device(*sdl, 2, 40); // more than the record has room for, and fewer axes
    ASSERT_TRUE(joysticks->read()[0]);
    for (const int button : {0, 1, 31, 32, 39}) {
        device.setButton(button, true);
    }
    EXPECT_EQ(joysticks->read()[0].value().buttons, 0x80000003U);
    device.setButton(1, false);
    EXPECT_EQ(joysticks->read()[0].value().buttons, 0x80000001U);
    EXPECT_EQ(joysticks->read()[0].value().axes[5], 32768);
}

TEST_F(VirtualJoysticks, ComeAndGoWhileReading) {
    EXPECT_FALSE(joysticks->read()[0]);
    Device first(*sdl, 2, 2);
    Device second(*sdl, 2, 2);
    Device third(*sdl, 2, 2);
    ASSERT_TRUE(joysticks->read()[0] && joysticks->read()[1]);
    first.setAxis(0, 100);
    second.setAxis(0, 200);
    EXPECT_EQ(joysticks->read()[0].value().axes[0], 32868);
    EXPECT_EQ(joysticks->read()[1].value().axes[0], 32968);
    first.unplug(); // its number goes to the one that waits, the other keeps its own
    ASSERT_TRUE(joysticks->read()[0]);
    third.setAxis(0, 300);
    EXPECT_EQ(joysticks->read()[0].value().axes[0], 33068);
    EXPECT_EQ(joysticks->read()[1].value().axes[0], 32968);
    second.unplug();
    EXPECT_FALSE(joysticks->read()[1]);
}

} // namespace
