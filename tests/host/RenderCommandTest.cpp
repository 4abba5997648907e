#include "host/Rendering.h"
#include "host/SmfBytes.h"
#include "host/SmfReader.h"
#include "support/FileContent.h"
#include "support/RandomCases.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace fs = std::filesystem;
using TestSupport::contentOf;

namespace {

class RenderCommand : public testing::Test {
protected:
    [[nodiscard]] std::string path(const std::string& name) const { return (folder.path() / name).string(); }
    std::string write(const std::string& name, const std::string& content) const {
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }
    // render with --data and these arguments.
    [[nodiscard]] ProgramRun render(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"render", "--data", path("data")});
        return runTembrel(arguments);
    }

    TemporaryFolder folder;
};

// Lines of an event list, by output, from the tracks of a file; names, tempo and ends are left out.
std::map<int, std::string> linesOf(const std::string& file) {
    std::map<int, std::string> lines;
    int output = 0;
    for (const auto& track : tracksOf(file)) {
        for (const SmfEvent& event : track) {
            const auto status = static_cast<std::uint8_t>(event.bytes[0]);
            if (status == 0xFF) {
                continue;
            }
            std::ostringstream line;
            line << event.tick << ' ' << output << ' ' << std::hex << std::uppercase;
            const std::string bytes = status == 0xF7 ? event.bytes.substr(1) : event.bytes;
            line << int{static_cast<std::uint8_t>(bytes[0])} << std::dec;
            for (std::size_t at = 1; at < bytes.size(); ++at) {
                line << ' ' << int{static_cast<std::uint8_t>(bytes[at])};
            }
            lines[output] += line.str() + '\n';
        }
        ++output;
    }
    return lines;
}

TEST_F(RenderCommand, WritesTheSameAsTextAndAsMidiFile) {
    RandomCases random;
    std::string script;
    for (int tick = 0; tick < 3000; tick += random.number(0, 20)) {
        script += std::to_string(tick) + " midi " + std::to_string(random.number(0, 2)) + ' ' +
                  std::to_string(random.number(0, 3) == 0 ? 0xF8 : 0xB0 + random.number(0, 15));
        script += script.ends_with("248") ? "\n" : ' ' + std::to_string(random.number(0, 119)) + " 64\n";
    }
    const std::string program = write("p.prg", "<ProgramFile><Program><Layers><Layer output=\"1\" channel=\"5\"/>"
                                               "<Layer output=\"0\"/></Layers></Program></ProgramFile>");
    const ProgramRun run = render({write("a.script", script), "--inputs", "3", "--outputs", "2", "--program", program,
                                   "--events", path("e"), "-o", path("o.mid")});
    ASSERT_EQ(run.exitCode, 0) << run.error;
    std::map<int, std::string> expected;
    std::istringstream list(contentOf(path("e")));
    for (std::string line; std::getline(list, line);) {
        expected[std::stoi(line.substr(line.find(' ')))] += line + '\n';
    }
    EXPECT_EQ(expected.size(), 2U);
    EXPECT_EQ(linesOf(contentOf(path("o.mid"))), expected);
}

TEST_F(RenderCommand, ReadsMidiFilesByContent) {
    const std::string track = hex("00 FF 51 03 0F 42 40 00 90 3C 40 83 60 80 3C 00 00 FF 2F 00");
    const ProgramRun run = render({write("a.script", smf(0, 240, {track})), "--events", "-", "-o", path("o.mid")});
    ASSERT_EQ(run.exitCode, 0) << run.error;
    EXPECT_EQ(run.output, "0 0 90 60 64\n960 0 80 60 0\n");
    const auto tracks = tracksOf(contentOf(path("o.mid")));
    // The tempo of the start, then that of the file, which stands at the same tick.
    EXPECT_EQ(std::count(tracks[0].begin(), tracks[0].end(), SmfEvent{0, hex("FF51 0F4240")}), 1);
}

// What is rendered again through the default layer, which sends all to channel 1, comes out as it went in.
TEST_F(RenderCommand, RendersItsOwnResultUnchanged) {
    const std::string script = write("a.script", "0 midi 0 0x90 60 100\n100 midi 0 0xE0 1 2\n200 midi 0 0x80 60 9\n"
                                                 "200 tempo 77\n300 midi 0 0xD0 5\n");
    ASSERT_EQ(render({script, "-o", path("1.mid"), "--events", path("1")}).exitCode, 0);
    ASSERT_EQ(render({path("1.mid"), "-o", path("2.mid"), "--events", path("2")}).exitCode, 0);
    EXPECT_EQ(contentOf(path("2")), contentOf(path("1")));
    EXPECT_EQ(contentOf(path("2.mid")), contentOf(path("1.mid")));
}

TEST_F(RenderCommand, SaysEachFaultInOneLine) {
    const std::string good = write("good.script", "0 midi 0 0x90 60 100\n");
    const std::string bad = write("bad.script", "0 reset\n0 play\n");
    const std::string badSmf = write("bad.mid", "MThd");
    const std::string badProgram = write("bad.prg", "<ProgramFile>\n</ProgramFile>\n");
    const std::string out = path("o.mid");
    struct Row {
        std::vector<std::string> arguments;
        int exitCode;
        std::string error; // how it begins
    };
    const Row rows[] = {
        {{path("none")}, 1, path("none") + ": cannot be read: "},
        {{folder.path().string()}, 1, folder.path().string() + ": is a folder"},
        {{bad, "-o", out}, 1, bad + ":2: unknown verb \"play\"\n"},
        {{badSmf, "-o", out}, 1, badSmf + ": byte 4: the file ends within its header\n"},
        {{good, "--program", badProgram, "-o", out}, 1, badProgram + ":1: there is no <Program>\n"},
        {{good, "--program", path("none"), "-o", out}, 1, path("none")},
        {{good, "--bank", path("none"), "-o", out}, 1, path("none")},
        {{good, "--events", path("no/e")}, 1, path("no/e") + ": cannot be written: "},
        {{good, "-o", path("no/o.mid"), "--events", path("e")}, 1, path("no/o.mid") + ": cannot be written: "},
        {{}, 2, "tembrel: INPUT is required"},
        {{good, "--inputs", "0"}, 2, "tembrel: --inputs: "},
        {{good, "--outputs", "129"}, 2, "tembrel: --outputs: "},
        {{good, "--tempo", "9"}, 2, "tembrel: --tempo: "},
        {{good, "--tail", "-1"}, 2, "tembrel: --tail: "},
        {{good, "--tail", "x"}, 2, "tembrel: --tail: "},
        {{good, "--slot", "1"}, 2, "tembrel render: --slot "},
        {{good, "-o", "-"}, 2, "tembrel render: "},
        {{good, "--nonsense"}, 2, "tembrel: The following argument was not expected: --nonsense"},
        {{good, bad}, 2, "tembrel: The following argument was not expected: "},
    };
    const auto files = [&] { return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()); };
    (void)render({good});
    const auto before = files();
    for (const Row& row : rows) {
        const ProgramRun run = render(row.arguments);
        const std::string what = testing::PrintToString(row.arguments);
        EXPECT_EQ(run.exitCode, row.exitCode) << what << run.error;
        EXPECT_EQ(run.error.substr(0, row.error.size()), row.error) << what;
        EXPECT_EQ(std::count(run.error.begin(), run.error.end(), '\n'), 1) << what << run.error;
        EXPECT_EQ(run.output, "") << what;
        EXPECT_EQ(files(), before) << what;
    }
}

TEST_F(RenderCommand, SaysWhatItIsAndCan) {
    EXPECT_EQ(runTembrel({"--version"}).output, "Tembrel 3.2\n");
    const ProgramRun help = runTembrel({"render", "--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* option : {"--program", "--bank", "--slot", "--tempo", "--events", "--inputs", "--outputs", "-o",
                               "--tail", "--stats", "--data"}) {
        EXPECT_NE(help.output.find(option), std::string::npos) << option;
    }
    const ProgramRun sung = runTembrel({"sing"});
    EXPECT_EQ(sung.exitCode, 2);
    EXPECT_EQ(sung.error, "tembrel: there is no verb \"sing\" (--help explains)\n");
    EXPECT_EQ(runTembrel({"render", "x", "--slot", "-1"}).error,
              "tembrel: --slot: -1 is no number from 0 on (--help explains)\n");
    const ProgramRun statistics = render({write("a.script", "0 midi 0 0xB0 1 2\n5 midi 0 0xF0\n"), "--stats"});
    EXPECT_EQ(statistics.error.rfind("2 events in, 1 events out, ", 0), 0U) << statistics.error;
}

// A full disk, where the system has one to try with.
TEST_F(RenderCommand, FailsWhenTheResultCannotBeWritten) {
    if (!fs::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full";
    }
    std::string script;
    for (int count = 0; count < 20'000; ++count) {
        script += std::to_string(count) + " midi 0 0xB0 1 2\n";
    }
    const ProgramRun run = render({write("a.script", script), "--events", "/dev/full"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.error, "/dev/full: cannot be written: No space left on device\n");
}

// tests/golden: NAME.script with its first line "# render OPTIONS", NAME.events, and NAME.prg or NAME.bnk where the
// program is not the built-in one. What comes out instead is written beside them.
TEST_F(RenderCommand, RendersWhatIsKeptAsGolden) {
    const fs::path golden = fs::path(TEMBREL_SOURCE_DIR) / "tests" / "golden";
    int count = 0;
    for (const auto& entry : fs::directory_iterator(golden)) {
        fs::path file = entry.path();
        if (file.extension() != ".script") {
            continue;
        }
        ++count;
        std::ifstream script(file);
        std::string word;
        std::string firstLine;
        std::getline(script, firstLine);
        std::istringstream words(firstLine);
        ASSERT_TRUE(words >> word && word == "#" && words >> word && word == "render") << file;
        std::vector<std::string> arguments = {file.string(), "--events", "-"};
        while (words >> word) {
            arguments.push_back(word);
        }
        if (fs::exists(file.replace_extension(".prg"))) {
            arguments.insert(arguments.end(), {"--program", file.string()});
        }
        if (fs::exists(file.replace_extension(".bnk"))) {
            arguments.insert(arguments.end(), {"--bank", file.string()});
        }
        const ProgramRun run = render(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.error;
        const auto expected = contentOf(file.replace_extension(".events"));
        if (expected != run.output) {
            std::ofstream(file.replace_extension(".actual"), std::ios::binary) << run.output;
            ADD_FAILURE() << "what came out is in " << file;
        }
    }
    EXPECT_GE(count, 6);
}

} // namespace
