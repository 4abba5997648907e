#include "core/FactoryFiles.h"
#include "core/MidiPortDriver.h"
#include "core/QelUtils.h"
#include "platform/Notices.h"
#include "platform/OwnModule.h"
#include "support/MemorySettings.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace Backend {
namespace {

namespace fs = std::filesystem;
using Platform::SettingsValue;

[[nodiscard]] Surroundings with(const std::shared_ptr<TestSupport::MemorySettings>& settings) {
    return {.applicationData = {}, .traceFolder = {}, .settings = settings, .milliseconds = {}, .reportFault = {}};
}

TEST(QelUtils, SystemFoldersEndWithCompanyAndApplication) {
    const Surroundings system = Surroundings::ofSystem();
    const fs::path data = QelUtils::getQelAppDataDir(system);
    EXPECT_EQ(data.filename(), "Tembrel 3");
    EXPECT_EQ(QelUtils::getCompanyAppDataDir(system), data.parent_path());
    EXPECT_EQ(data.parent_path().filename(), "Pellinor Software");
    EXPECT_EQ(system.traceFolder, data.parent_path().parent_path());
}

TEST(QelUtils, SurroundingsInAFolderNeverReachAboveIt) {
    const fs::path folder = fs::temp_directory_path() / "tembrel surroundings";
    fs::remove_all(folder);
    {
        const Surroundings own = Surroundings::inFolder(folder);
        EXPECT_EQ(QelUtils::getQelAppDataDir(own), folder);
        EXPECT_EQ(QelUtils::getCompanyAppDataDir(own), folder);
        EXPECT_EQ(own.traceFolder, folder);
        const auto key = own.settings->openOrCreate(Platform::SettingsRoot::currentUser, "Software\\Test");
        ASSERT_TRUE(key);
        EXPECT_EQ(key->write("Name", SettingsValue::ofNumber(7)), 0);
        const Surroundings again = Surroundings::inFolder(folder);
        const auto sameKey = again.settings->open(Platform::SettingsRoot::currentUser, "Software\\Test");
        ASSERT_TRUE(sameKey);
        EXPECT_EQ(sameKey->read("Name"), SettingsValue::ofNumber(7));
    }
    fs::remove_all(folder);
}

TEST(QelUtils, ReadsTheInstallationFolder) {
    struct Row {
        const char* name;
        SettingsValue stored;
        const char* folder;
    };
    const Row rows[] = {
        {"as it is", SettingsValue::ofString("C:\\Programs\\Tembrel"), "C:\\Programs\\Tembrel"},
        {"without the last backslash", SettingsValue::ofString("C:\\Programs\\Tembrel\\"), "C:\\Programs\\Tembrel"},
        {"one of two", SettingsValue::ofString("C:\\Tembrel\\\\"), "C:\\Tembrel\\"},
        {"without the last slash", SettingsValue::ofString("/opt/tembrel/"), "/opt/tembrel"},
        {"the root stays", SettingsValue::ofString("/"), "/"},
        {"empty", SettingsValue::ofString(""), ""},
    };
    for (const Row& row : rows) {
        const auto settings = std::make_shared<TestSupport::MemorySettings>();
        settings->keys["Software\\Pellinor Software\\Tembrel 3\\3.2"] = {{"ProgDir", row.stored}};
        EXPECT_EQ(QelUtils::getQelProgDir(with(settings)).string(), row.folder) << row.name;
    }
    EXPECT_TRUE(QelUtils::getQelProgDir(with(nullptr)).empty());
}

TEST(QelUtils, AKeyExistsOnceItHoldsTheInstallationFolder) {
    const auto settings = std::make_shared<TestSupport::MemorySettings>();
    const Surroundings surroundings = with(settings);
    const std::string key = QelUtils::getRegistryKey("Other");
    EXPECT_EQ(key, "Software\\Pellinor Software\\Other\\3.2");
    EXPECT_FALSE(QelUtils::registryKeyExists(surroundings, key));
    EXPECT_TRUE(settings->keys.empty()) << "asking creates nothing";
    settings->keys[key] = {{"Other", SettingsValue::ofNumber(1)}};
    EXPECT_FALSE(QelUtils::registryKeyExists(surroundings, key));
    settings->keys[key] = {{"ProgDir", SettingsValue::ofString("")}};
    EXPECT_TRUE(QelUtils::registryKeyExists(surroundings, key));
    EXPECT_TRUE(QelUtils::getQelProgDir(surroundings).empty());
    EXPECT_FALSE(QelUtils::showManual(surroundings)) << "without an installation there is no manual";
}

// Factory files.

[[nodiscard]] std::string namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            names.push_back(fs::relative(entry.path(), folder).generic_string());
        }
    }
    std::sort(names.begin(), names.end());
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

void write(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << text;
}

[[nodiscard]] std::string textOf(const fs::path& file) {
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
}

class Factory : public testing::Test {
protected:
    Factory() {
        for (const char* const file :
             {"Banks/Default Bank.bnk", "Layer Presets/000 - Default.pst", "Sequences/1.seq"}) {
            write(folder.path() / "installed" / "Default" / file, "factory");
        }
        surroundings.applicationData = data;
        surroundings.installation = folder.path() / "installed";
        surroundings.settings = settings;
    }

    TemporaryFolder folder;
    fs::path data = folder.path() / QelUtils::COMPANY_NAME / QelUtils::APPLICATION_NAME;
    std::shared_ptr<TestSupport::MemorySettings> settings = std::make_shared<TestSupport::MemorySettings>();
    Surroundings surroundings;
};

TEST_F(Factory, FoldersThatTheUserHasStayAsTheyAre) {
    write(data / "Banks" / "Mine.bnk", "mine");
    FactoryFiles::copyMissingFolders(surroundings);
    EXPECT_EQ(namesIn(data), "Banks/Mine.bnk, Layer Presets/000 - Default.pst, Sequences/1.seq");
    fs::remove(data / "Sequences" / "1.seq");
    FactoryFiles::copyMissingFolders(surroundings);
    EXPECT_FALSE(fs::exists(data / "Sequences" / "1.seq")); // what was deleted does not come back
    surroundings.installation.clear();
    fs::remove_all(data);
    FactoryFiles::copyMissingFolders(surroundings);
    EXPECT_FALSE(fs::exists(data));
}

TEST_F(Factory, WhatKilledProgramsLeftIsRemovedAtTheNextStart) {
    for (const char* const file :
         {".tmp-aaaaaaaaaaaaaaaa/1.seq", ".tmp-mine/1.seq", "Banks/.tmp-cccccccccccccccc", "Banks/Mine.bnk"}) {
        write(data / file, "half");
    }
    FactoryFiles::removeLeftovers(surroundings); // another program may be copying just now
    EXPECT_EQ(namesIn(data), ".tmp-aaaaaaaaaaaaaaaa/1.seq, .tmp-mine/1.seq, Banks/Mine.bnk");
    FactoryFiles::removeLeftovers(surroundings, fs::file_time_type::clock::now() + std::chrono::hours(2));
    EXPECT_EQ(namesIn(data), ".tmp-mine/1.seq, Banks/Mine.bnk");
}

TEST_F(Factory, FilesAreNeverOverwritten) {
    write(data / "Banks" / "Default Bank.bnk", "changed");
    QelUtils::copyFiles(surroundings, data, "Banks");
    QelUtils::copyFiles(surroundings, data, "Layer Presets");
    QelUtils::copyFiles(surroundings, data, "No Such Folder");
    EXPECT_EQ(textOf(data / "Banks" / "Default Bank.bnk"), "changed");
    EXPECT_EQ(textOf(data / "Layer Presets" / "000 - Default.pst"), "factory");
}

TEST_F(Factory, UninstallingLeavesWhatTheUserMade) {
    FactoryFiles::copyMissingFolders(surroundings);
    write(data / "Retrospective Record" / "_buffer0.tmp", "");
    write(data / "Retrospective Record" / "_previous" / "_buffer0.tmp", "");
    write(data / "Midi Inputs.txt", "");
    write(data / "Midi Outputs.txt", "");
    QelUtils::uninstall(surroundings);
    EXPECT_FALSE(fs::exists(data.parent_path()));
    QelUtils::uninstall(surroundings); // once more: nothing to do

    FactoryFiles::copyMissingFolders(surroundings);
    for (const char* const file :
         {"Banks/Mine.bnk", "Layer Presets/Deep/000 - Default.pst", "Retrospective Record/Take.mid"}) {
        write(data / file, "mine");
    }
    write(data / "Retrospective Record" / "_buffer0.tmp", "");
    write(data / "Retrospective Record" / "_previous" / "_buffer0.tmp", "");
    QelUtils::uninstall(surroundings);
    EXPECT_EQ(namesIn(data), "Banks/Mine.bnk, Layer Presets/Deep/000 - Default.pst, Retrospective Record/Take.mid");
    EXPECT_FALSE(fs::exists(data / "Sequences"));
}

// The driver of the virtual port.

constexpr const char* drivers = "Software\\Microsoft\\Windows NT\\CurrentVersion\\Drivers32";
constexpr const char* userDrivers = "Software\\Microsoft\\Windows NT\\CurrentVersion\\userinstallable.drivers";
constexpr const char* descriptions = "Software\\Microsoft\\Windows NT\\CurrentVersion\\drivers.desc";

class PortDriver : public testing::Test {
protected:
    PortDriver() {
        Platform::setMessageBoxHandler([this](const std::string& text, const std::string& caption) {
            boxes += (boxes.empty() ? "" : "; ") + caption + ": " + text;
        });
    }
    ~PortDriver() override { Platform::setMessageBoxHandler({}); }

    std::string boxes;
};

// In a store of the system's own kind, so that all works alike on both systems.
TEST_F(PortDriver, TakesTheNextNumber) {
    struct Row {
        const char* name;
        std::vector<std::string> drivers;
        std::vector<std::string> userDrivers;
        const char* registered;
    };
    for (const Row& row : {
             Row{"none", {}, {}, "midi1"},
             Row{"the mapper's", {"midi"}, {}, "midi1"},
             Row{"gaps", {"midi", "midi1", "midi7"}, {}, "midi8"},
             Row{"leading zeros", {"midi007", "midi3"}, {}, "midi8"},
             Row{"no number", {"midix", "midimapper"}, {}, "midi1"},
             Row{"a number and more", {"midi12x"}, {}, "midi13"},
             Row{"the other key", {"midi2"}, {"midi9"}, "midi10"},
             Row{"other names", {"wave5", "mid9", "xmidi9"}, {}, "midi1"},
             Row{"a negative number", {"midi-5"}, {}, "midi1"},
             Row{"a number that is none", {"midi99999999999999"}, {}, "midi1"},
             Row{"capitals", {"MIDI4"}, {}, "midi5"},
         }) {
        const TemporaryFolder folder;
        const auto store = Platform::fileSettingsStore(folder.path());
        const auto key = store->openOrCreate(Platform::SettingsRoot::localMachine, drivers);
        for (const std::string& name : row.drivers) {
            ASSERT_EQ(key->write(name, SettingsValue::ofString("other.dll")), 0);
        }
        const auto userKey = store->openOrCreate(Platform::SettingsRoot::localMachine, userDrivers);
        for (const std::string& name : row.userDrivers) {
            ASSERT_EQ(userKey->write(name, SettingsValue::ofString("other.dll")), 0);
        }
        boxes.clear();
        MidiPortDriver::install(*store, "Tembrel");
        EXPECT_EQ(key->read(row.registered), SettingsValue::ofString("qelmidiport.dll")) << row.name;
        EXPECT_EQ(userKey->read(row.registered), SettingsValue::ofString("qelmidiport.dll")) << row.name;
        const auto description = store->open(Platform::SettingsRoot::localMachine, descriptions);
        EXPECT_EQ(description->read("qelmidiport.dll"), SettingsValue::ofString("Tembrel"));
        EXPECT_EQ(boxes, "Tembrel 3 Install: You must restart Windows before using the virtual midi port") << row.name;
        MidiPortDriver::install(*store, "Tembrel"); // a second installation
        MidiPortDriver::uninstall(*store);
        EXPECT_EQ(key->names().size(), row.drivers.size()) << row.name;
        EXPECT_EQ(userKey->names().size(), row.userDrivers.size()) << row.name;
        EXPECT_TRUE(description->names().empty());
    }
}

TEST_F(PortDriver, SaysWhatTheStoreRefuses) {
    TestSupport::MemorySettings store;
    store.opens = false;
    MidiPortDriver::install(store, "Tembrel");
    MidiPortDriver::uninstall(store);
    EXPECT_EQ(boxes, "ERROR: Couldn't open/create registry key (1)");
    EXPECT_TRUE(store.keys.empty());
    store.opens = true;
    store.refused = drivers; // the other two are still written
    boxes.clear();
    MidiPortDriver::install(store, "Tembrel");
    EXPECT_EQ(boxes, "ERROR: Couldn't set registry value (1). Return value = 5; "
                     "Tembrel 3 Install: You must restart Windows before using the virtual midi port");
    EXPECT_EQ(store.keys[userDrivers].size(), 1U);
    EXPECT_EQ(store.keys[descriptions].size(), 1U);
}

TEST_F(PortDriver, UninstallingRemovesItsOwnOnly) {
    TestSupport::MemorySettings store;
    for (const char* const name : {"midi1", "midi3", "midi", "wave1"}) {
        store.keys[drivers][name] = SettingsValue::ofString("qelmidiport.dll");
        store.keys[userDrivers][name] = SettingsValue::ofString("qelmidiport.dll");
    }
    store.keys[drivers]["midi2"] = SettingsValue::ofString("other.dll");
    store.keys[userDrivers]["midi2"] = SettingsValue::ofString("qelmidiport.dll");
    MidiPortDriver::uninstall(store);
    for (const char* const key : {drivers, userDrivers}) {
        std::string left;
        for (const auto& [name, value] : store.keys[key]) {
            left += name + " ";
        }
        EXPECT_EQ(left, "midi midi2 wave1 ");
    }
    EXPECT_EQ(boxes, "");
}

TEST_F(PortDriver, APortThatExistsIsNotRegistered) {
    const auto store = std::make_shared<TestSupport::MemorySettings>();
    if (!QelUtils::virtualMidiPortExists()) {
        GTEST_SKIP() << "without the driver there is no such port here";
    }
    QelUtils::install(with(store), true);
    EXPECT_TRUE(store->keys.empty());
    EXPECT_EQ(boxes, "");
}

TEST(QelUtils, KnowsItsOwnModule) {
    EXPECT_NE(QelUtils::getDllInstance(), nullptr);
    EXPECT_TRUE(fs::exists(Platform::programFile()));
    EXPECT_TRUE(fs::is_regular_file(Platform::moduleFile()));
}

} // namespace
} // namespace Backend
