#include "core/QelUtils.h"
#include "support/MemorySettings.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace Backend
