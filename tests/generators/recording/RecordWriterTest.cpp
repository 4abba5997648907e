#include "generators/recording/RecordWriter.h"

#include "generators/recording/RecordContent.h"
#include "generators/recording/RecordRig.h"
#include "support/FileContent.h"
#include "support/RandomCases.h"

#include <fstream>
#include <gtest/gtest.h>
#include <numeric>

using namespace Backend::Recording;
namespace fs = std::filesystem;

namespace {

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int each : values) {
        text += static_cast<char>(each);
    }
    return text;
}

std::string joined(const std::vector<std::string>& parts) {
    return std::accumulate(parts.begin(), parts.end(), std::string());
}

const std::string header = bytes({'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 0, 0, 1, 0, 0x60, 'M', 'T', 'r', 'k'});
const std::string closing = bytes({0x60, 0xB0, 0x78, 0, 0, 0xFF, 0x2F, 0});

std::uint64_t ticksOf(const std::string& midiFile) {
    BufferReader events(std::string_view(midiFile).substr(22));
    std::uint64_t ticks = 0;
    for (BufferEvent event; events.next(event);) {
        ticks += event.ticks;
    }
    return ticks;
}

// --- the stated bytes

struct DeltaCase {
    const char* name;
    std::uint32_t milliseconds;
    std::string delta;
};

TEST(RecordWriter, WritesDeltasInTicksOfFiveMilliseconds) {
    const DeltaCase cases[] = {
        {"at once", 0, bytes({0})},
        {"3 ms", 3, bytes({0})},
        {"5 ms", 5, bytes({1})},
        {"9 ms", 9, bytes({1})},
        {"the last of one byte", 639, bytes({0x7F})},
        {"the first of two", 640, bytes({0x81, 0})},
        {"over the clock's wrapping", 2000, bytes({0x83, 0x10})},
        {"the longest", 7000, bytes({0x8A, 0x78})},
        {"longer", 10'000, bytes({0x8A, 0x78})},
        {"weeks", 0x9000'0000, bytes({0x8A, 0x78})},
        {"stamped before the last one was", static_cast<std::uint32_t>(-4), bytes({0})},
    };
    for (const DeltaCase& one : cases) {
        RecordRig rig;
        rig.play(0, 0xB0, 7, 1);
        rig.play(one.milliseconds, 0x91, 60, 100);
        rig.flush();
        EXPECT_EQ(joined(rig.contents()), bytes({0, 0xB0, 7, 1}) + one.delta + bytes({0x91, 60, 100})) << one.name;
    }
}

struct MessageCase {
    const char* name;
    std::uint32_t status, d1, d2;
    std::string written;
};

TEST(RecordWriter, WritesWhatCanStandInAFile) {
    const MessageCase cases[] = {
        {"program change", 0xC5, 17, 0, bytes({0, 0xC5, 17})},
        {"pitch bend", 0xEF, 1, 127, bytes({0, 0xEF, 1, 127})},
        {"song position", 0xF2, 3, 4, bytes({0, 0xF2, 3, 4})},
        {"clock", 0xF8, 0, 0, bytes({0, 0xF8})},
        {"System Reset, never", 0xFF, 0, 0, ""},
        {"system exclusive, which is not sent", 0xF0, 1, 2, ""},
        {"its end", 0xF7, 0, 0, ""},
        {"no message", 0xF4, 0, 0, ""},
        {"a data byte", 0x40, 0, 0, ""},
        {"data above 127", 0x90, 200, 1, ""},
    };
    for (const MessageCase& one : cases) {
        RecordRig rig;
        rig.play(0, one.status, one.d1, one.d2);
        rig.flush();
        EXPECT_EQ(joined(rig.contents()), one.written) << one.name;
    }
}

TEST(RecordWriter, SavesOneFileAndBeginsAnew) {
    RecordRig rig;
    rig.play(700, 0x90, 60, 100);
    rig.play(20, 0x80, 60, 0);
    const auto saved = rig.writer->save(rig.target(), std::nullopt);
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved.value(), (SavedRecord{true, 2, 1, 20}));
    const std::string events = bytes({0x81, 0x0C, 0x90, 60, 100, 4, 0x80, 60, 0});
    EXPECT_EQ(TestSupport::contentOf(rig.target()), header + bytes({0, 0, 0, 17}) + events + closing);
    EXPECT_EQ(joined(rig.contents()), "");

    rig.play(50, 0x90, 62, 1); // counted from the saving
    rig.flush();
    EXPECT_EQ(joined(rig.contents()), bytes({10, 0x90, 62, 1}));
    EXPECT_EQ(rig.writer->takes().size(), 1U);
}

TEST(RecordWriter, LeavesNoFileWhenNothingWasPlayed) {
    RecordRig rig;
    for (int round = 0; round < 2; ++round) {
        const auto saved = rig.writer->save(rig.target(), std::nullopt);
        ASSERT_TRUE(saved);
        EXPECT_FALSE(saved.value().written);
        EXPECT_FALSE(fs::exists(rig.target()));
        rig.play(10, 0xB3, 120, 0); // All Sound Off counts as nothing, on any channel
        rig.play(10, 0xB0, 120, 0);
        rig.play(10, 0xFF);
    }
    rig.play(10, 0xB0, 121, 0);
    EXPECT_TRUE(rig.writer->save(rig.target(), std::nullopt).value().written);
    EXPECT_TRUE(fs::exists(rig.target()));
}

TEST(RecordWriter, KeepsTheRecordWhenTheTargetCannotBeWritten) {
    RecordRig rig;
    rig.play(0, 0x90, 60, 1);
    EXPECT_FALSE(rig.writer->save(rig.folder.path() / "missing" / "out.mid", std::nullopt));
    EXPECT_FALSE(rig.writer->save(rig.folder.path() / "buffers", std::nullopt)) << "a folder is in the way";
    EXPECT_EQ(rig.writer->save(rig.target(), std::nullopt).value().notes, 1U);
}

// --- rotation

TEST(RecordWriter, FillsFilesInTurnAndDropsTheOldest) {
    for (const std::uint32_t older : {0U, 1U, 3U}) {
        SCOPED_TRACE(older);
        RecordRig rig({.fileSize = 22, .olderFiles = older}); // room for four events of four bytes
        std::string all;
        for (std::uint32_t i = 0; i < 30; ++i) {
            rig.play(0, 0x90, i, 1);
            all += bytes({0, 0x90, static_cast<int>(i), 1});
            if (i % 3 == 0) {
                rig.flush();
            }
        }
        rig.flush();
        const std::vector<std::string> contents = rig.contents();
        ASSERT_EQ(contents.size(), older + 1);
        for (std::size_t i = 0; i < older; ++i) {
            EXPECT_EQ(contents[i].size(), 16U);
        }
        EXPECT_TRUE(all.ends_with(joined(contents))) << "in order, without a gap";
        const auto takes = rig.writer->takes();
        ASSERT_EQ(takes.size(), 1U);
        EXPECT_EQ(takes[0].end, joined(contents).size());
        EXPECT_EQ(takes[0].notes, takes[0].end / 4);
    }
}

TEST(RecordWriter, HasFewerFilesAsSoonAsItIsTold) {
    RecordRig rig({.fileSize = 12, .olderFiles = 5});
    for (std::uint32_t i = 0; i < 6; ++i) {
        rig.play(0, 0x90, i, 1);
    }
    rig.flush();
    rig.writer->setLimits({.fileSize = 12, .olderFiles = 2});
    EXPECT_EQ(joined(rig.contents()), bytes({0, 0x90, 3, 1, 0, 0x90, 4, 1, 0, 0x90, 5, 1}));
    EXPECT_EQ(rig.writer->takes().at(0).notes, 3U);
}

// --- takes

TEST(RecordWriter, PartsTakesBySilence) {
    RecordRig rig({.fileSize = 30, .olderFiles = 100});
    rig.now = 1000;
    rig.flush();
    const std::int64_t start = rig.calendar + rig.now;
    rig.play(100, 0x90, 60, 100);
    rig.play(6000, 0x80, 60, 0); // a held note is no silence
    rig.flush();
    rig.play(4999, 0x91, 61, 1);
    rig.play(10, 0x91, 61, 0);
    rig.play(5000, 0xB0, 1, 2);
    rig.flush();
    rig.play(60'000, 0x90, 1, 1);
    rig.play(0, 0x90, 2, 1);
    rig.play(0, 0xB0, 123, 0);
    rig.play(2000, 0xC0, 1);
    rig.flush();
    const auto takes = rig.writer->takes();
    ASSERT_EQ(takes.size(), 3U);
    const std::int64_t second = start + 100 + 6000 + 4999 + 10 + 5000;
    EXPECT_EQ(takes[0].start, start + 100);
    EXPECT_EQ(takes[0].ticks, 1200U + 999 + 2);
    EXPECT_EQ(takes[0].notes, 2U);
    EXPECT_EQ(takes[1].start, second);
    EXPECT_EQ(takes[1].ticks, 0U);
    EXPECT_EQ(takes[1].notes, 0U);
    EXPECT_EQ(takes[2].start, second + 60'000);
    EXPECT_EQ(takes[2].ticks, 400U);
    EXPECT_EQ(takes[2].notes, 2U);

    // One by one, each from its own start; the record stays.
    for (const int fromLast : {1, 2, 3}) {
        const auto saved = rig.writer->save(rig.target(), fromLast);
        ASSERT_TRUE(saved) << saved.fault().text();
        EXPECT_EQ(saved.value().milliseconds, takes[static_cast<std::size_t>(3 - fromLast)].ticks * 5);
        const std::string file = TestSupport::contentOf(rig.target());
        EXPECT_EQ(file[22], 0) << "begins at once";
        EXPECT_EQ(ticksOf(file), saved.value().milliseconds / 5 + 0x60);
    }
    EXPECT_FALSE(rig.writer->save(rig.target(), 4));
    EXPECT_EQ(rig.writer->takes(), takes);
}

TEST(RecordWriter, LeavesBuffersThatTellTheSameTakesAgain) {
    RandomCases random;
    for (int round = 0; round < 20; ++round) {
        RecordRig rig({.fileSize = random.number(20U, 200U), .olderFiles = random.number(0U, 12U)});
        rig.now = 1000;
        for (int i = 0; i < 300; ++i) {
            const auto status = random.number(0, 9) == 0 ? 0xB0U : random.number(0, 1) == 0 ? 0x90U : 0x80U;
            rig.play(random.number(0, 40) == 0 ? random.number(4000U, 9000U) : random.number(0U, 700U), status,
                     random.number(60U, 62U), random.number(0U, 2U));
            if (random.number(0, 5) == 0) {
                rig.flush();
            }
        }
        rig.writer->close();
        const auto takes = rig.writer->takes();
        auto again = takesIn(rig.buffers());
        // A note that is held since before the oldest buffer is not known to be held any more.
        while (again.size() > takes.size() && again.size() > 1) {
            again[1].begin = again[0].begin;
            again[1].notes += again[0].notes;
            again.erase(again.begin());
        }
        ASSERT_EQ(again.size(), takes.size());
        for (std::size_t i = 1; i < takes.size(); ++i) {
            EXPECT_EQ(again[i], takes[i]);
        }
        EXPECT_EQ(again[0].end, takes[0].end);
        EXPECT_EQ(again[0].notes, takes[0].notes);
    }
}

// --- when the disk does not want

TEST(RecordWriter, ACalendarThatIsSetBackHarmsNoTake) {
    constexpr std::int64_t anHour = 3'600'000;
    RecordRig rig;
    rig.now = 0;
    rig.start({});
    std::vector<std::int64_t> starts;
    for (const std::int64_t change : {std::int64_t{0}, -anHour, 2 * anHour}) {
        rig.calendar += change;
        rig.flush(); // the recorder wakes when something is played after a pause
        rig.play(60'000, 0x90, 60, 1);
        rig.flush();
        rig.play(100, 0x80, 60);
        rig.flush();
        starts.push_back(rig.calendar + rig.now);
    }
    const std::vector<Take> takes = rig.writer->takes();
    ASSERT_EQ(takes.size(), 3U);
    for (std::size_t i = 0; i < takes.size(); ++i) {
        EXPECT_EQ(takes[i].notes, 1U);
        EXPECT_NEAR(static_cast<double>(takes[i].start), static_cast<double>(starts[i]), 200) << i;
    }
    EXPECT_EQ(rig.writer->save(rig.target(), 2).value().notes, 1U);
}

TEST(RecordWriter, PausesSaysSoOnceAndGoesOn) {
    RecordRig rig;
    rig.play(0, 0x90, 60, 1);
    rig.flush();
    rig.writer->setLimits({.fileSize = 12, .olderFiles = 1});
    fs::create_directories(rig.buffers() / "_0.tmp" / "in the way"); // what the next rotation makes
    for (int second = 0; second < 3; ++second) {
        rig.play(1000, 0x90, 61, 1);
        rig.flush();
    }
    ASSERT_EQ(rig.remarks.size(), 1U);
    EXPECT_NE(rig.remarks[0].find("the record pauses: "), std::string::npos);
    EXPECT_EQ(rig.writer->missed(), 3U);

    fs::remove_all(rig.buffers() / "_0.tmp");
    rig.now += 1000;
    rig.flush();
    rig.play(0, 0x90, 62, 1);
    rig.flush();
    ASSERT_EQ(rig.remarks.size(), 2U);
    EXPECT_EQ(rig.remarks[1], "the record goes on; messages that it has missed: 3");
    EXPECT_EQ(rig.contents().size(), 2U);
    EXPECT_EQ(rig.writer->save(rig.target(), std::nullopt).value().notes, 2U);
}

TEST(RecordWriter, GoesOnInAFolderThatIsMadeAgain) {
    RecordRig rig;
    rig.play(0, 0x90, 60, 1);
    rig.flush();
    EXPECT_TRUE(rig.writer->save(rig.target(), 1));
    std::error_code error;
    fs::remove_all(rig.folder.path() / "buffers", error);
    if (fs::exists(rig.folder.path() / "buffers" / "_current.tmp")) {
        GTEST_SKIP() << "this system keeps files that are open";
    }
    rig.play(10, 0x90, 61, 1);
    rig.flush();
    rig.flush();
    EXPECT_EQ(joined(rig.contents()), bytes({2, 0x90, 61, 1})) << "what was not written yet is not lost";
    EXPECT_EQ(rig.remarks.size(), 2U);
    EXPECT_EQ(rig.writer->takes().at(0).notes, 1U);
    EXPECT_EQ(rig.writer->missed(), 0U);
}

// From the start, or all of a sudden, where the system lets open files be moved.
TEST(RecordWriter, AFolderInThePlaceOfTheBufferPausesTheRecord) {
    for (const bool fromTheStart : {true, false}) {
        RecordRig rig;
        const fs::path current = rig.buffers() / "_current.tmp";
        if (fromTheStart) {
            rig.writer.reset();
            fs::remove(current);
        } else if (std::error_code error; fs::rename(current, rig.folder.path() / "away", error), error) {
            GTEST_SKIP() << "this system keeps files that are open";
        }
        fs::create_directory(current);
        if (fromTheStart) {
            rig.start({});
        }
        for (int second = 0; second < 3; ++second) {
            rig.play(1000, 0x90, 61, 1);
            rig.flush();
        }
        ASSERT_EQ(rig.remarks.size(), 1U) << fromTheStart;
        fs::remove(current);
        rig.now += 1000;
        rig.flush();
        rig.play(0, 0x90, 62, 1);
        rig.flush();
        EXPECT_EQ(rig.remarks.size(), 2U) << fromTheStart;
        EXPECT_EQ(rig.writer->missed(), fromTheStart ? 3U : 2U) << "what was to be written when it happened is kept";
        EXPECT_EQ(rig.writer->takes().at(0).notes, fromTheStart ? 1U : 2U);
    }
}

TEST(RecordWriter, TornAndForeignBuffersGiveWhatIsWholeInThem) {
    RandomCases random;
    for (int round = 0; round < 50; ++round) {
        RecordRig rig({.fileSize = 60, .olderFiles = 4});
        for (std::uint32_t i = 0; i < 60; ++i) {
            rig.play(random.number(0U, 800U), 0x90, i, 1);
        }
        rig.flush();
        const auto files = BufferFiles::list(rig.buffers());
        const auto& file = files[random.number(std::size_t{0}, files.size() - 1)];
        std::string content = TestSupport::contentOf(file);
        if (random.number(0, 1) == 0) {
            content.resize(random.number(std::size_t{0}, content.size()));
        } else {
            content[random.number(std::size_t{0}, content.size() - 1)] = static_cast<char>(random.number(0, 255));
        }
        std::ofstream(file, std::ios::binary | std::ios::trunc) << content;
        const auto takes = takesIn(rig.buffers());
        const auto saved = saveRecord(rig.buffers(), takes, rig.target(), std::nullopt);
        ASSERT_TRUE(saved);
        const std::string written = TestSupport::contentOf(rig.target());
        BufferReader events(std::string_view(written).substr(22));
        std::uint64_t count = 0;
        for (BufferEvent event; events.next(event);) {
            ++count;
        }
        EXPECT_EQ(count, saved.value().events + 1) << "and the All Sound Off";
        EXPECT_EQ(written.substr(22 + events.position()), closing.substr(4)) << "every event of the file can be read";
        EXPECT_EQ(takes.back().end + 30, written.size());
    }
}

} // namespace
