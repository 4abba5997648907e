#include "host/SmfReader.h"

#include "host/SmfBytes.h"
#include "support/RandomCases.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <tuple>

using namespace Host;

namespace {

const std::string end = hex("00 FF 2F 00");

// One event a line: "tick port status d1 d2" or "tick tempo".
std::string listOf(Performance& performance) {
    std::ostringstream list;
    PerformanceEvent event;
    while (performance.next(event)) {
        list << event.tick;
        if (const auto* midi = std::get_if<MidiArrives>(&event.what)) {
            list << ' ' << int{midi->port} << ' ' << std::hex << int{midi->status} << std::dec << ' ' << int{midi->d1}
                 << ' ' << int{midi->d2};
        } else {
            list << " tempo " << std::get<SetTempo>(event.what).beatsPerMinute;
        }
        list << '\n';
    }
    return list.str();
}

std::string read(const std::string& file, int inputs = 16) {
    auto reader = SmfReader::open(file, "a.mid", inputs);
    return reader ? listOf(*reader.value()) : reader.fault().text();
}

struct Case {
    const char* name;
    std::string file;
    std::string expected;
};
void PrintTo(const Case& row, std::ostream* out) {
    *out << row.name;
}

class SmfFiles : public testing::TestWithParam<Case> {};

TEST_P(SmfFiles, AreReadOrRefused) {
    EXPECT_EQ(read(GetParam().file, 2), GetParam().expected);
}

std::string one(std::string_view track, int division = 480) {
    return smf(0, division, {hex(track) + end});
}
std::string bare(std::string_view track) {
    return smf(0, 480, {hex(track)});
}

INSTANTIATE_TEST_SUITE_P(
    Good, SmfFiles,
    testing::Values(
        Case{"all channel messages",
             one("00 80 3C 40 01 91 3D 41 01 A2 3E 42 01 B3 07 64 01 C4 05 01 D5 06 01 E6 00 40"),
             "0 0 80 60 64\n1 0 91 61 65\n2 0 a2 62 66\n3 0 b3 7 100\n4 0 c4 5 0\n5 0 d5 6 0\n6 0 e6 0 64\n"},
        Case{"running status", one("00 90 3C 40 0A 3D 41 0A C0 01 00 02"),
             "0 0 90 60 64\n10 0 90 61 65\n20 0 c0 1 0\n20 0 c0 2 0\n"},
        Case{"running status over a meta", one("00 90 3C 40 00 FF 01 01 41 00 3D 41"), "0 0 90 60 64\n0 0 90 61 65\n"},
        Case{"SysEx, escapes and metas pass", one("05 F0 03 01 02 F7 05 F7 01 F8 05 FF 7F 02 00 00 05 90 01 02"),
             "20 0 90 1 2\n"},
        Case{"system messages, as takes hold them, pass", one("00 F8 05 F2 00 01 05 F3 07 05 90 01 02"),
             "15 0 90 1 2\n"},
        Case{"a tempo, and its rounding", one("00 FF 51 03 07 A1 20 0A FF 51 03 07 A1 21 0A FF 51 03 08 B0 00"),
             "0 tempo 120\n20 tempo 105\n"},
        Case{"tempos beyond what is played", one("00 FF 51 03 FF FF FF 01 FF 51 03 00 00 01 01 FF 51 03 00 00 00"),
             "0 tempo 10\n1 tempo 500\n"},
        Case{
            "a port for the rest of its track",
            smf(1, 480, {hex("00 FF 21 01 01 00 90 01 02 00 FF 21 01 00 00 90 03 04") + end, hex("00 90 05 06") + end}),
            "0 1 90 1 2\n0 0 90 3 4\n0 0 90 5 6\n"},
        Case{"a port that plays nothing may be any", one("00 FF 21 01 7F 00 FF 51 03 07 A1 20"), "0 tempo 120\n"},
        Case{"tracks merge by tick, then track",
             smf(1, 480, {hex("0A 90 01 01 0A 90 01 02") + end, hex("00 91 01 03 0A 91 01 04 0A 91 01 05") + end}),
             "0 0 91 1 3\n10 0 90 1 1\n10 0 91 1 4\n20 0 90 1 2\n20 0 91 1 5\n"},
        Case{"ticks round half up, tracks merge by the rounded tick",
             smf(1, 960, {hex("02 90 01 01") + end, hex("01 91 01 02 02 91 01 03") + end}),
             "1 0 90 1 1\n1 0 91 1 2\n2 0 91 1 3\n"},
        Case{"an odd division", one("01 90 01 01 01 90 01 02 01 90 01 03", 7),
             "69 0 90 1 1\n137 0 90 1 2\n206 0 90 1 3\n"},

        Case{"foreign chunks and a longer header",
             hex("4D546864 00000008 0001 0001 01E0 FFFF") + chunk("XFIH", "12345") +
                 chunk("MTrk", hex("00 90 01 02") + end) + "rubbish",
             "0 0 90 1 2\n"},
        Case{"what stands behind the end of a track", one("00 90 01 02 00 FF 2F 00 00 FF"), "0 0 90 1 2\n"},
        Case{"nothing but an end", one(""), ""}),
    [](const auto& row) {
        std::string name;
        for (const char c : std::string(row.param.name)) {
            name.push_back(std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_');
        }
        return name;
    });

INSTANTIATE_TEST_SUITE_P(
    Bad, SmfFiles,
    testing::Values(
        Case{"nothing", "", "a.mid: byte 0: not a Standard MIDI File"},
        Case{"half a header", hex("4D546864 00000006 0001"), "a.mid: byte 10: the file ends within its header"},
        Case{"a short header", hex("4D546864 00000004 0001 0001 01E0 0000"), "a.mid: byte 4: a header of 4 bytes"},
        Case{"a header beyond the file", hex("4D546864 FFFFFFFF 0001 0001 01E0"),
             "a.mid: byte 4: a header of 4294967295 bytes"},
        Case{"format 2", smf(2, 480, {end}), "a.mid: byte 8: format 2; only the formats 0 and 1 are read"},
        Case{"format 0 with two tracks", smf(0, 480, {end, end}), "a.mid: byte 10: format 0 with 2 tracks"},
        Case{"no track", smf(1, 480, {}), "a.mid: byte 10: a file without tracks"},
        Case{"SMPTE", smf(0, 0xE728, {end}),
             "a.mid: byte 12: time in SMPTE frames; only ticks a quarter note are read"},
        Case{"division 0", smf(0, 0, {end}), "a.mid: byte 12: a division of 0 ticks a quarter note"},
        Case{"a track too few", hex("4D546864 00000006 0001 0002 01E0") + chunk("MTrk", end),
             "a.mid: byte 26: the file ends after 1 of 2 tracks"},
        Case{"a chunk beyond the file", smf(0, 480, {end}).substr(0, 24),
             "a.mid: byte 18: a chunk reaches beyond the end of the file"},
        Case{"no end of track", bare("00 90 01 02"), "a.mid: byte 26: the track ends without an end-of-track event"},
        Case{"an empty track", bare(""), "a.mid: byte 22: the track ends without an end-of-track event"},
        Case{"half a delta", bare("81"), "a.mid: byte 23: the track ends within a number"},
        Case{"a delta of five bytes", one("81 82 83 84 05 90 01 02"),
             "a.mid: byte 25: a number is longer than four bytes"},
        Case{"a delta and nothing", bare("00"), "a.mid: byte 23: the track ends within an event"},
        Case{"half a message", bare("00 90 01"), "a.mid: byte 25: the track ends within a message"},
        Case{"data without status", one("00 3C 40"), "a.mid: byte 23: a data byte stands where a status must"},
        Case{"status within a message", one("00 90 3C 80"), "a.mid: byte 25: a status stands where a data byte must"},
        Case{"an undefined status", one("00 F9"), "a.mid: byte 23: an undefined status"},
        Case{"a song position that is cut", one("00 F2 90 3C 40"),
             "a.mid: byte 24: a status stands where a data byte must"},
        Case{"SysEx beyond the track", one("00 F0 20 01"),
             "a.mid: byte 24: a length reaches beyond the end of the track"},
        Case{"a meta beyond the track", one("00 FF 01 8F FF FF 7F"),
             "a.mid: byte 25: a length reaches beyond the end of the track"},
        Case{"half a meta", bare("00 FF"), "a.mid: byte 24: the track ends within a meta event"},
        Case{"a tempo of two bytes", one("00 FF 51 02 07 A1"), "a.mid: byte 25: a tempo event has three bytes"},
        Case{"a port of no byte", one("00 FF 21 00"), "a.mid: byte 25: a port event has one byte"},
        Case{"a port that is not there", one("00 FF 21 01 02 00 90 01 02"),
             "a.mid: byte 31: there is no input port 2; inputs: 2"},
        Case{"a tick beyond the last", one("FF FF FF 7F 90 01 01 FF FF FF 7F 90 01 02", 96),
             "a.mid: byte 36: an event later than tick 2000000000"}),
    [](const auto& row) {
        std::string name;
        for (const char c : std::string(row.param.name)) {
            name.push_back(std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_');
        }
        return name;
    });

// 2,000,000,000 ticks, cut into deltas of at most four bytes.
TEST(SmfReader, TakesTheLastTickAndNoneBehindIt) {
    std::string track;
    for (int count = 0; count < 7; ++count) {
        track += hex("FF FF FF 7F FF 01 00");
    }
    const std::string last = track + variableLength(120'951'815) + hex("90 01 02") + end;
    const std::string beyond = track + variableLength(120'951'816) + hex("90 01 02") + end;
    EXPECT_EQ(read(smf(0, 480, {last})), "2000000000 0 90 1 2\n");
    EXPECT_EQ(read(smf(0, 480, {beyond})), "a.mid: byte 78: an event later than tick 2000000000");
}

// The order of the merge, against sorting a list of everything.
TEST(SmfReader, GivesTheEventsOfAllTracksInOrder) {
    RandomCases random;
    for (int round = 0; round < 50; ++round) {
        const int division = random.number(1, 2000);
        const int trackCount = random.number(1, 40);
        std::vector<std::string> tracks;
        std::vector<std::tuple<std::int64_t, int, std::string>> all; // tick, track, the rest of the line
        for (int number = 0; number < trackCount; ++number) {
            std::string track;
            std::int64_t time = 0;
            for (int count = random.number(0, 60); count > 0; --count) {
                const int delta = random.number(0, 3) == 0 ? random.number(0, 100'000) : random.number(0, 2);
                const int note = random.number(0, 127);
                const int velocity = random.number(0, 127);
                time += delta;
                track += variableLength(static_cast<std::uint32_t>(delta)) + '\x90' + static_cast<char>(note) +
                         static_cast<char>(velocity);
                all.emplace_back((time * 960 + division) / (2 * division), number,
                                 " 0 90 " + std::to_string(note) + ' ' + std::to_string(velocity) + '\n');
            }
            tracks.push_back(track + end);
        }
        std::stable_sort(all.begin(), all.end(), [](const auto& a, const auto& b) {
            return std::tie(std::get<0>(a), std::get<1>(a)) < std::tie(std::get<0>(b), std::get<1>(b));
        });
        std::string expected;
        for (const auto& [tick, track, rest] : all) {
            expected += std::to_string(tick) + rest;
        }
        ASSERT_EQ(read(smf(1, division, tracks)), expected);
    }
}

// Whatever a file is damaged to, it is read or refused with the byte that is wrong, and what is read is in order.
TEST(SmfReader, SurvivesDamage) {
    RandomCases random;
    const std::string whole =
        smf(1, 96,
            {hex("00 FF 03 04 74657374 00 FF 51 03 07A120 83 60 FF 58 04 04021808") + end,
             hex("00 FF 21 01 01 00 90 3C 40 60 3C 00 81 00 B0 07 64 00 F0 05 7E7F0901F7 20 C3 05") + end,
             hex("10 E0 00 40 10 D1 22 10 A2 3C 11") + end});
    for (int round = 0; round < 20'000; ++round) {
        std::string file = whole;
        for (int damage = random.number(1, 4); damage > 0 && file.size() > 8; --damage) {
            const auto at = random.number<std::size_t>(4, file.size() - 1);
            switch (random.number(0, 3)) {
            case 0:
                file[at] = static_cast<char>(random.number(0, 255));
                break;
            case 1:
                file.erase(at, random.number<std::size_t>(1, 4));
                break;
            case 2:
                file.insert(at, 1, static_cast<char>(random.number(0, 255)));
                break;
            default:
                file.resize(std::max<std::size_t>(at, 6));
                break;
            }
        }
        auto reader = SmfReader::open(file, "a.mid", 2);
        if (!reader) {
            ASSERT_EQ(reader.fault().reason.rfind("byte ", 0), 0U);
            continue;
        }
        PerformanceEvent event;
        std::int32_t tick = 0;
        std::size_t count = 0;
        while (reader.value()->next(event)) {
            ASSERT_LE(tick, event.tick);
            tick = event.tick;
            ASSERT_LT(++count, file.size());
        }
        ASSERT_LE(tick, latestTick);
    }
}

} // namespace
