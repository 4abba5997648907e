// A short run of every fuzzer, for builds without libFuzzer: its seeds, each whole, cut and damaged. A finding traps;
// then libFuzzer is the one to look for it.
#include "platform/SafeFiles.h"
#include "platform/ThreadServices.h"
#include "support/RandomCases.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

extern "C" {
// The one function of each fuzzer, by the name that the build gives it here.
int fuzzBank(const std::uint8_t*, std::size_t);
int fuzzMidiInput(const std::uint8_t*, std::size_t);
int fuzzPreset(const std::uint8_t*, std::size_t);
int fuzzProgram(const std::uint8_t*, std::size_t);
int fuzzRecord(const std::uint8_t*, std::size_t);
int fuzzScript(const std::uint8_t*, std::size_t);
int fuzzSequence(const std::uint8_t*, std::size_t);
int fuzzSettings(const std::uint8_t*, std::size_t);
int fuzzSmf(const std::uint8_t*, std::size_t);
int fuzzTake(const std::uint8_t*, std::size_t);
int fuzzVersion2(const std::uint8_t*, std::size_t);
}

namespace {

namespace fs = std::filesystem;

struct Fuzzer {
    const char* name;
    int (*run)(const std::uint8_t*, std::size_t);
    std::vector<const char*> seeds; // folders of the source tree
    const char* extension = "";     // of those that count; empty: all
};
void PrintTo(const Fuzzer& fuzzer, std::ostream* out) {
    *out << fuzzer.name;
}

class Fuzzers : public testing::TestWithParam<Fuzzer> {
protected:
    void SetUp() override { Platform::initializeThreadServices(); } // XML needs them on Windows
    void TearDown() override { Platform::uninitializeThreadServices(); }
    // Small ones: large seeds say nothing that small ones do not, and take long.
    [[nodiscard]] std::vector<std::string> seeds() const {
        constexpr std::size_t largest = 8 * 1024;
        std::vector<std::string> texts;
        for (const char* folder : GetParam().seeds) {
            for (const auto& file : fs::recursive_directory_iterator(fs::path(TEMBREL_SOURCE_DIR) / folder)) {
                if (file.is_regular_file() && file.file_size() <= largest &&
                    (*GetParam().extension == '\0' || file.path().extension() == GetParam().extension)) {
                    texts.push_back(Platform::readWholeFile(file.path(), largest).value());
                }
            }
        }
        return texts;
    }
    void run(const std::string& text) const {
        GetParam().run(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    }
    [[nodiscard]] std::size_t placeIn(const std::string& text) { return random.number<std::size_t>(0, text.size()); }

    // Bytes changed, left out, doubled or exchanged, or a piece of another seed put in.
    void damage(std::string& text, const std::vector<std::string>& others) {
        constexpr std::string_view telling("\0\x7F\x80\xFF<>&\"'/= \n-,.|#0", 20);
        for (int changes = random.number(1, 6); changes > 0 && !text.empty(); --changes) {
            const std::size_t at = random.number<std::size_t>(0, text.size() - 1);
            const std::size_t length = std::min(random.number<std::size_t>(1, 24), text.size() - at);
            const std::string& other = others[random.number<std::size_t>(0, others.size() - 1)];
            switch (random.number(0, 5)) {
            case 0:
                text[at] = static_cast<char>(random.number(0, 255));
                break;
            case 1:
                text[at] = telling[random.number<std::size_t>(0, telling.size() - 1)];
                break;
            case 2:
                text.erase(at, length);
                break;
            case 3:
                text.insert(placeIn(text), text.substr(at, length));
                break;
            case 4:
                text.insert(at, other.substr(placeIn(other), length));
                break;
            default:
                text.resize(at);
            }
        }
    }

    RandomCases random;
};

TEST_P(Fuzzers, FindNothing) {
    constexpr int damaged = 1500;
    const std::vector<std::string> texts = seeds();
    ASSERT_FALSE(texts.empty());
    for (const std::string& text : texts) {
        run(text);
    }
    for (int i = 0; i < damaged; ++i) {
        std::string text = texts[random.number<std::size_t>(0, texts.size() - 1)];
        damage(text, texts);
        run(text);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Fuzzers,
                         testing::Values(Fuzzer{"bank", fuzzBank, {"tests/corpus/bank"}},
                                         Fuzzer{"midiinput", fuzzMidiInput, {"tests/corpus/midiinput"}},
                                         Fuzzer{"preset", fuzzPreset, {"tests/corpus/preset"}},
                                         Fuzzer{"program", fuzzProgram, {"tests/golden"}, ".prg"},
                                         Fuzzer{"record", fuzzRecord, {"tests/corpus/record"}},
                                         Fuzzer{"script", fuzzScript, {"tests/corpus/script"}},
                                         Fuzzer{"sequence", fuzzSequence, {"tests/corpus/sequence"}},
                                         Fuzzer{"settings", fuzzSettings, {"tests/corpus/settings"}},
                                         Fuzzer{"smf", fuzzSmf, {"tests/corpus/smf"}},
                                         Fuzzer{"take", fuzzTake, {"tests/corpus/take"}},
                                         Fuzzer{"version2", fuzzVersion2, {"tests/corpus/version2"}}),
                         [](const auto& row) { return row.param.name; });

} // namespace
