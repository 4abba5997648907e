#include "platform/SettingsStore.h"

#include "platform/Clocks.h"
#include "platform/Notices.h"
#include "platform/SafeFiles.h"
#include "platform/SettingsChild.h"
#include "platform/SettingsFormat.h"
#include "platform/Threads.h"
#include "support/RandomCases.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace Platform;
namespace fs = std::filesystem;

namespace {

constexpr SettingsRoot user = SettingsRoot::currentUser;

SettingsValue value(SettingsKind kind, const std::string& data) {
    const auto* const bytes = reinterpret_cast<const std::byte*>(data.data());
    return {kind, {bytes, bytes + data.size()}};
}

std::string everyByte() {
    std::string text;
    for (int i = 1; i < 256; ++i) {
        text += static_cast<char>(i);
    }
    return text;
}

// Collects what is said on the debug output.
struct DebugLines {
    std::vector<std::string> lines;
    DebugLines() {
        setDebugOutputHandler([this](const std::string& line) { lines.push_back(line); });
    }
    ~DebugLines() { setDebugOutputHandler({}); }
    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;
};

// The same laws for the store of files and for the system's own.
class SettingsStores : public testing::TestWithParam<std::string> {
protected:
    void TearDown() override {
        for (const std::string& name : key->names()) {
            key->remove(name);
        }
    }
    std::unique_ptr<SettingsStore> open() const {
        return GetParam() == "file" ? fileSettingsStore(folder.path() / "settings") : systemSettingsStore();
    }

    TemporaryFolder folder;
    std::string path = "Software\\Pellinor Software\\Tembrel Tests";
    std::unique_ptr<SettingsStore> store = open();
    std::unique_ptr<SettingsKey> key = store->openOrCreate(user, path);
};

} // namespace

TEST_P(SettingsStores, KeepValuesOfEveryKindByteForByte) {
    const SettingsValue values[] = {
        SettingsValue::ofString(""),
        SettingsValue::ofString("C:\\Program Files\\x"),
        SettingsValue::ofString("\xC3\x9C"
                                "bung \xE9\x9F\xB3 \xF0\x9F\x8E\xB9"),
        SettingsValue::ofString(everyByte()),
        SettingsValue::ofString(" \"quoted\" \r\n\t# [x] = "),
        value(SettingsKind::string, "no zero"),
        value(SettingsKind::string, std::string("a\0b\0\0", 5)),
        SettingsValue::ofNumber(0),
        SettingsValue::ofNumber(0xFFFF'FFFE),
        value(SettingsKind::bytes, ""),
        value(SettingsKind::bytes, std::string("\0\x01\xFF\xFE", 4)),
    };
    ASSERT_NE(key, nullptr);
    for (const SettingsValue& each : values) {
        // Always under the same name: a value takes the place of one of another kind.
        ASSERT_EQ(key->write("Value", each), 0);
        EXPECT_EQ(key->read("Value"), each);
        const auto later = open()->open(user, path);
        ASSERT_NE(later, nullptr);
        EXPECT_EQ(later->read("Value"), each) << "through another store";
    }
}

TEST_P(SettingsStores, MatchNamesAndPathsWithoutCase) {
    ASSERT_EQ(key->write("MidiThru", SettingsValue::ofNumber(1)), 0);
    ASSERT_EQ(key->write("MIDITHRU", SettingsValue::ofNumber(2)), 0);
    EXPECT_EQ(key->read("midithru"), SettingsValue::ofNumber(2));
    EXPECT_EQ(key->names(), std::vector<std::string>{"MidiThru"});
    const auto other = store->open(user, "SOFTWARE\\pellinor software\\TEMBREL tests");
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->read("MidiThru"), SettingsValue::ofNumber(2));
}

TEST_P(SettingsStores, NameAndRemoveValues) {
    const std::vector<std::string> names = {"a", "b \\ \"]", "midi1"};
    for (const std::string& name : names) {
        ASSERT_EQ(key->write(name, SettingsValue::ofString(name)), 0);
    }
    std::vector<std::string> found = key->names();
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, names);
    EXPECT_TRUE(key->remove("MIDI1"));
    EXPECT_FALSE(key->remove("midi1"));
    EXPECT_FALSE(key->remove("missing"));
    EXPECT_EQ(key->read("midi1"), std::nullopt);
    EXPECT_EQ(key->names().size(), 2U);
}

TEST_P(SettingsStores, OpenOnlyKeysThatExist) {
    EXPECT_EQ(store->open(user, path + "\\Missing"), nullptr);
    EXPECT_EQ(store->open(user, path.substr(0, path.size() - 1)), nullptr) << "part of a name is no key";
    EXPECT_NE(store->open(user, "Software\\Pellinor Software"), nullptr) << "the keys above exist, too";
    ASSERT_EQ(key->write("Value", SettingsValue::ofNumber(1)), 0);
    const auto above = store->open(user, "Software\\Pellinor Software");
    ASSERT_NE(above, nullptr);
    EXPECT_EQ(above->read("Value"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Platform, SettingsStores, testing::Values("file", "system"),
                         [](const auto& which) { return which.param; });

TEST(FileSettings, AreReadableText) {
    const TemporaryFolder folder;
    const auto key = fileSettingsStore(folder.path())->openOrCreate(user, "Software\\a/b");
    ASSERT_EQ(key->write("Text", SettingsValue::ofString("\xC3\x9C \"x\" C:\\y\n\x01")), 0);
    ASSERT_EQ(key->write("Size", SettingsValue::ofNumber(200)), 0);
    ASSERT_EQ(key->write("Raw", value(SettingsKind::bytes, "\x01\xFE")), 0);
    ASSERT_EQ(key->write("Short", value(SettingsKind::number, "\x01")), 0);
    const auto text = readWholeFile(folder.path() / "current-user.settings", 1'000);
    ASSERT_TRUE(text);
    EXPECT_EQ(text.value(), "# Tembrel settings, format 1\n\n[Software/a\\x2fb]\n\"Raw\" = bytes 01 fe\n\"Short\" = "
                            "kind 4 bytes 01\n\"Size\" = number 200\n\"Text\" = string \"\xC3\x9C \\\"x\\\" "
                            "C:\\\\y\\n\\x01\"\n");
}

TEST(FileSettings, OfRandomContentSurviveTheTextForm) {
    RandomCases cases;
    auto& random = cases.generator();
    const auto text = [&random](unsigned shortest, bool isPath) {
        std::string result(shortest + random() % 6, ' ');
        for (char& letter : result) {
            do {
                letter = static_cast<char>(random() % 3 == 0 ? random() : "/]\"\\# ax"[random() % 8]);
            } while (isPath && letter == '\\');
        }
        return result;
    };
    for (int round = 0; round < 300; ++round) {
        SettingsTree tree;
        for (unsigned keys = random() % 4; keys > 0; --keys) {
            SettingsValues& values = tree.keys[text(1, true) + '\\' + text(1, true)];
            for (unsigned count = random() % 5; count > 0; --count) {
                const auto kind = static_cast<SettingsKind>(random() % 8);
                values.insert_or_assign(text(0, false), value(kind, text(0, false)));
            }
        }
        const std::string written = formatSettings(tree);
        const auto read = parseSettings(written, "x");
        ASSERT_TRUE(read) << read.fault().text() << '\n' << written;
        ASSERT_EQ(read.value().keys, tree.keys) << written;
        // Damaged text is a fault or other content, never a crash.
        std::string damaged = written;
        damaged[random() % damaged.size()] = static_cast<char>(random());
        static_cast<void>(parseSettings(damaged.substr(0, random() % (damaged.size() + 1)), "x"));
    }
}

TEST(FileSettings, ThatAreNotUnderstoodAreKeptAsideAndSaidOnce) {
    struct Case {
        const char* name;
        std::string content;
        const char* said;
    };
    const std::string first = "# Tembrel settings, format 1\n";
    for (const Case& each : {Case{"other format", "# Tembrel settings, format 2\n", ":1: "}, Case{"empty", "", "empty"},
                             Case{"no key", first + "\"a\" = number 1\n", ":2: "},
                             Case{"cut", first + "[k]\n\n\"a\" = string \"x", ":4: "},
                             Case{"number", first + "[k]\n\"a\" = number 4294967296\n", ":3: "},
                             Case{"bytes", first + "[k]\n\"a\" = bytes 0\n", ":3: "},
                             Case{"escape", first + "[k]\n\"a\" = string \"\\q\"\n", ":3: "},
                             Case{"bracket", first + "[k\n", ":2: "}, Case{"garbage", "\x01\x02\xFF", ":1: "}}) {
        SCOPED_TRACE(each.name);
        const TemporaryFolder folder;
        const fs::path file = folder.path() / "current-user.settings";
        ASSERT_TRUE(replaceFile(file, each.content));
        const DebugLines debug;
        const auto store = fileSettingsStore(folder.path());
        EXPECT_EQ(store->open(user, "k"), nullptr);
        const auto key = store->openOrCreate(user, "k");
        ASSERT_NE(key, nullptr);
        EXPECT_EQ(key->write("b", SettingsValue::ofNumber(2)), 0);
        EXPECT_EQ(key->names(), std::vector<std::string>{"b"});
        ASSERT_EQ(debug.lines.size(), 1U);
        EXPECT_NE(debug.lines[0].find(each.said), std::string::npos) << debug.lines[0];
        const auto kept = readWholeFile(folder.path() / "current-user.settings.unreadable-1", 1'000);
        ASSERT_TRUE(kept);
        EXPECT_EQ(kept.value(), each.content);
    }
}

TEST(FileSettings, ThatCannotBeReadAreNotOverwritten) {
    const TemporaryFolder folder;
    fs::create_directories(folder.path() / "current-user.settings" / "in the way");
    const auto store = fileSettingsStore(folder.path());
    EXPECT_EQ(store->openOrCreate(user, "k"), nullptr);
    EXPECT_EQ(store->open(user, "k"), nullptr);
    EXPECT_TRUE(fs::is_directory(folder.path() / "current-user.settings" / "in the way"));
}

TEST(FileSettings, ALockThatIsNeverLetGoOfKeepsNobodyWaiting) {
    const TemporaryFolder folder;
    const auto store = fileSettingsStore(folder.path());
    store->openOrCreate(SettingsRoot::currentUser, "A")->write("one", SettingsValue::ofNumber(1));
    auto held = std::make_unique<FileLock>(folder.path() / "current-user.lock");
    const auto start = monotonicTime();
    for (int i = 0; i < 40; ++i) { // what a start asks for
        const auto key = store->open(SettingsRoot::currentUser, "A");
        ASSERT_TRUE(key);
        EXPECT_EQ(key->read("one"), SettingsValue::ofNumber(1));
        EXPECT_NE(key->write("one", SettingsValue::ofNumber(2)), 0);
    }
    EXPECT_LT(monotonicTime() - start, 10 * FileLock::usualPatience) << "only the first waits";
    held.reset();
    EXPECT_EQ(store->open(SettingsRoot::currentUser, "A")->write("one", SettingsValue::ofNumber(3)), 0);
}

TEST(FileSettings, OfTwoProcessesAndTwoThreadsAtOnceLoseNothing) {
    const TemporaryFolder folder;
    constexpr unsigned each = 25;
    {
        std::vector<std::unique_ptr<Thread>> threads;
        for (const char* const prefix : {"x", "y"}) {
            threads.push_back(std::make_unique<Thread>(
                [prefix, &folder] { EXPECT_EQ(startSettingsChild(folder.path(), prefix, each), 0); }));
            threads.push_back(std::make_unique<Thread>([prefix, &folder] {
                const auto key = fileSettingsStore(folder.path())->openOrCreate(user, "Software\\Shared");
                for (unsigned i = 0; i < each; ++i) {
                    EXPECT_EQ(key->write(std::string("own-") + prefix + std::to_string(i), SettingsValue::ofNumber(i)),
                              0);
                }
            }));
        }
        for (const auto& thread : threads) {
            thread->resume();
        }
    }
    const auto key = fileSettingsStore(folder.path())->open(user, "Software\\Shared");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->names().size(), 4 * each);
    EXPECT_EQ(key->read("y24"), SettingsValue::ofNumber(24));
}
