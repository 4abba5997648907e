#include "host/live/RoomForEnds.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <map>

namespace {

using Host::MidiBytes;

// Whatever is played while nobody empties the queue: each note whose begin found room is ended, and the room kept for
// that suffices.
TEST(RoomForEnds, EveryNoteThatBeganIsEnded) {
    RandomCases random;
    for (int round = 0; round < 50; ++round) {
        const std::size_t limit = random.number(std::size_t{1}, std::size_t{300});
        Host::RoomForEnds room(2, limit);
        std::size_t waiting = 0;
        std::map<int, int> played;   // as the engine has it: by place, channel, note
        std::map<int, int> sounding; // as the port will hear it
        const auto send = [&](int note, bool on) {
            const auto d1 = static_cast<std::uint8_t>(note % 4);
            const auto channel = static_cast<std::uint8_t>(note / 4 % 2);
            const MidiBytes bytes{{static_cast<std::uint8_t>((on || note % 3 == 0 ? 0x90 : 0x80) | channel), d1,
                                   static_cast<std::uint8_t>(on ? 1 : 0)},
                                  3};
            played[note] += on ? 1 : -1;
            if (room.admits(note / 8, bytes, waiting)) {
                ++waiting;
                sounding[note] += on ? 1 : sounding[note] > 0 ? -1 : 0;
            }
        };
        for (int i = 0; i < 1000; ++i) {
            const int note = random.number(0, 15);
            if (room.admits(1, {{0xB0, 7, 1}, 3}, waiting)) {
                ++waiting;
            }
            if (played[note] < 3 && random.number(0, 2) != 0) {
                send(note, true);
            } else if (played[note] > 0) {
                send(note, false);
            }
        }
        for (int note = 0; note < 16; ++note) {
            while (played[note] > 0) {
                send(note, false);
            }
            EXPECT_EQ(sounding[note], 0) << "round " << round << ", note " << note;
        }
        EXPECT_GE(waiting, limit);
        EXPECT_LE(waiting, limit + 16 * 3) << "ends of what sounded when it was full, and no more";
        EXPECT_FALSE(room.admits(0, {{0x90, 60, 1}, 3}, limit));
        EXPECT_TRUE(room.admits(0, {{0x90, 60, 1}, 3}, limit - 1)) << "emptied";
    }
}

} // namespace
