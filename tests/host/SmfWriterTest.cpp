#include "host/SmfWriter.h"

#include "host/EventListWriter.h"
#include "host/SmfBytes.h"
#include "support/FileContent.h"
#include "support/RandomCases.h"
#include "support/TemporaryFolder.h"
#include "values/QelMidiMessage.h"

#include <fstream>
#include <gtest/gtest.h>

using namespace Host;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

namespace {

QelMidiMessage message(int output, int status, int d1 = 0, int d2 = 0) {
    const int channel = status < 0xF0 ? status & 0x0F : 0;
    return {static_cast<MessageType>(status),
            static_cast<std::int8_t>(d1),
            static_cast<std::int8_t>(d2),
            static_cast<std::int8_t>(channel),
            static_cast<std::int8_t>(output),
            -1,
            -1,
            Backend::noTicks};
}

class SmfWriting : public testing::Test {
protected:
    [[nodiscard]] std::string target(const std::string& name = "out.mid") const {
        return (folder.path() / name).string();
    }
    [[nodiscard]] std::size_t files() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.path()), {}));
    }
    // What play() writes to a file with these outputs, which `end` ends.
    template <typename Play>
    std::vector<std::vector<SmfEvent>> written(const std::vector<std::string>& outputs, std::int32_t end, Play play) {
        SmfWriter writer(target(), outputs);
        EXPECT_TRUE(writer.open());
        play(writer);
        EXPECT_TRUE(writer.isGood());
        EXPECT_TRUE(writer.finish(end));
        return tracksOf(TestSupport::contentOf(target()));
    }

    TemporaryFolder folder;
};

TEST_F(SmfWriting, NamesTracksHoldsTempoAndEscapesSystemMessages) {
    const auto tracks = written({"Out 1", "Out 2"}, 960, [](SmfWriter& writer) {
        writer.setTempo(0, 120);
        writer.play(0, message(0, 0x93, 60, 100));
        writer.play(10, message(1, 0xC1, 5));
        writer.play(20, message(0, 0xF2, 1, 2));
        writer.play(20, message(0, 0xF8));
        writer.setTempo(30, 90);
        writer.play(40, message(0, 0x83, 60, 1));
    });
    ASSERT_EQ(tracks.size(), 2U);
    EXPECT_EQ(tracks[0], (std::vector<SmfEvent>{{0, hex("FF03") + "Out 1"},
                                                {0, hex("FF51 07A120")},
                                                {0, hex("93 3C 64")},
                                                {20, hex("F7 F2 01 02")},
                                                {20, hex("F7 F8")},
                                                {30, hex("FF51 0A2C2B")},
                                                {40, hex("83 3C 01")},
                                                {40, hex("FF2F")}}));
    EXPECT_EQ(tracks[1], (std::vector<SmfEvent>{{0, hex("FF03") + "Out 2"}, {10, hex("C1 05")}, {10, hex("FF2F")}}));
}

TEST_F(SmfWriting, EndsWhatStillSounds) {
    const auto tracks = written({"A", "B"}, 500, [](SmfWriter& writer) {
        writer.play(0, message(0, 0x9F, 127, 1)); // left
        writer.play(0, message(0, 0x90, 60, 100));
        writer.play(0, message(0, 0x90, 60, 100)); // ended once, for both
        writer.play(1, message(0, 0x90, 61, 100)); // ended by velocity 0
        writer.play(2, message(0, 0x90, 61, 0));
        writer.play(3, message(0, 0x80, 60, 0));
        writer.play(4, message(1, 0x90, 0, 100)); // left
    });
    ASSERT_EQ(tracks.size(), 2U);
    ASSERT_GE(tracks[0].size(), 2U);
    EXPECT_EQ(tracks[0][tracks[0].size() - 2], (SmfEvent{500, hex("8F 7F 64")}));
    EXPECT_EQ(tracks[0][tracks[0].size() - 3].tick, 3);
    EXPECT_EQ(tracks[1][2], (SmfEvent{500, hex("80 00 64")}));
}

TEST_F(SmfWriting, CutsLongPauses) {
    const auto tracks =
        written({"A"}, 0, [](SmfWriter& writer) { writer.play(2'000'000'000, message(0, 0xB0, 1, 2)); });
    EXPECT_EQ(tracks[0][tracks[0].size() - 2], (SmfEvent{2'000'000'000, hex("B0 01 02")}));
}

// Far more than is held in memory, on several tracks, comes back whole and in order; nothing is left beside the file.
TEST_F(SmfWriting, KeepsEverythingInOrder) {
    RandomCases random;
    std::vector<std::vector<SmfEvent>> expected(3);
    const auto tracks = written({"A", "B", "C"}, 2'000'000'000, [&](SmfWriter& writer) {
        std::int32_t tick = 0;
        for (int count = 0; count < 100'000; ++count) {
            tick += random.number(0, 9) == 0 ? random.number(0, 20'000) : 0;
            const int output = random.number(0, 3) == 0 ? random.number(1, 2) : 0;
            static constexpr int statuses[] = {0x80, 0xA0, 0xB0, 0xC0, 0xD0, 0xE0, 0xF3, 0xFA};
            const int type = statuses[random.number(0, 7)];
            const int status = type < 0xF0 ? type | random.number(0, 15) : type;
            const QelMidiMessage sent = message(output, status, random.number(0, 127), random.number(0, 127));
            std::string bytes = status < 0xF0 ? "" : "\xF7";
            bytes += static_cast<char>(status);
            const int size = sent.getMidiMessage().getMessageSize();
            bytes += size > 0 ? std::string(1, static_cast<char>(sent.getD1())) : "";
            bytes += size > 1 ? std::string(1, static_cast<char>(sent.getD2())) : "";
            expected[static_cast<std::size_t>(output)].push_back({tick, bytes});
            writer.play(tick, sent);
        }
    });
    ASSERT_EQ(tracks.size(), expected.size());
    for (std::size_t track = 0; track < expected.size(); ++track) {
        ASSERT_EQ(tracks[track].size(), expected[track].size() + 2);
        EXPECT_TRUE(std::equal(expected[track].begin(), expected[track].end(), tracks[track].begin() + 1));
    }
    EXPECT_EQ(files(), 1U);
}

TEST_F(SmfWriting, LeavesNothingHalfDone) {
    std::ofstream(target()) << "old";
    {
        SmfWriter writer(target(), {"A"});
        ASSERT_TRUE(writer.open());
        for (int count = 0; count < 50'000; ++count) {
            writer.play(count, message(0, 0xB0, 1, 2));
        }
        EXPECT_GT(files(), 1U);
    }
    EXPECT_EQ(TestSupport::contentOf(target()), "old");
    EXPECT_EQ(files(), 1U);

    SmfWriter nowhere(target("missing/out.mid"), {"A"});
    const auto opened = nowhere.open();
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.fault().file, target("missing/out.mid"));
    SmfWriter folderItself(folder.path().string(), {"A"});
    EXPECT_FALSE(folderItself.open());
}

TEST_F(SmfWriting, EventListsHaveTheirFormat) {
    EventListWriter writer(target("events"));
    ASSERT_TRUE(writer.open());
    writer.play(0, message(0, 0x90, 60, 100));
    writer.play(960, message(127, 0xBF, 7, 127));
    writer.play(960, message(1, 0xC0, 5));
    writer.play(2'000'000'000, message(0, 0xF8));
    writer.play(2'050'000'000, message(0, 0xF2, 1, 2));
    ASSERT_TRUE(writer.finish(0));
    EXPECT_EQ(TestSupport::contentOf(target("events")), "0 0 90 60 100\n960 127 BF 7 127\n960 1 C0 5\n"
                                                        "2000000000 0 F8\n2050000000 0 F2 1 2\n");
    EXPECT_EQ(files(), 1U);
}

} // namespace
