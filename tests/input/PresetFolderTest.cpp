// Whatever a file, a function or a message calls a preset: no other place is read, written or removed.
#include "input/PresetFolder.h"

#include "platform/SafeFiles.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using Backend::Component::PresetFolder;

std::size_t filesBelow(const fs::path& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::recursive_directory_iterator(folder), fs::recursive_directory_iterator()));
}

TEST(PresetFolder, NamesThatLeadElsewhereNameNothing) {
    const TemporaryFolder folder;
    fs::create_directories(folder.path() / "Presets" / "inside");
    // What they would meet.
    for (const char* file : {"outside.pst", ".pst", "Presets/inside/deep.pst"}) {
        ASSERT_TRUE(Platform::replaceFile(folder.path() / file, "<Layers/>"));
    }
    const PresetFolder presets(folder.path() / "Presets", "Layers");
    const std::size_t before = filesBelow(folder.path());
    const std::string absolute = (folder.path() / "outside").string();
    for (const std::string& name : {std::string(),
                                    std::string("../outside"),
                                    std::string("..\\outside"),
                                    std::string("inside/../../outside"),
                                    std::string("inside/deep"),
                                    std::string("inside\\deep"),
                                    std::string("./inside/deep"),
                                    absolute,
                                    "/" + absolute,
                                    std::string("C:outside"),
                                    std::string("C:\\outside"),
                                    std::string("\\\\?\\C:\\outside"),
                                    std::string("file:stream"),
                                    std::string("out\0side", 8),
                                    std::string("../outside\0", 11),
                                    std::string("line\nend"),
                                    std::string("a*"),
                                    std::string("what?"),
                                    std::string("a|b"),
                                    std::string("<a>"),
                                    std::string("CON"),
                                    std::string("nul"),
                                    std::string("Aux.new"),
                                    std::string("PRN "),
                                    std::string("com1"),
                                    std::string("LPT9.a.b"),
                                    std::string("COM\xC2\xB2"),
                                    std::string("conin$"),
                                    std::string(65536, 'x')}) {
        EXPECT_FALSE(presets.exists(name)) << name;
        EXPECT_FALSE(presets.read(name)) << name;
        EXPECT_FALSE(presets.write(name, "<Layers/>")) << name;
        EXPECT_FALSE(presets.remove(name)) << name;
        EXPECT_EQ(filesBelow(folder.path()), before) << name;
    }
}

TEST(PresetFolder, OddNamesAreNamesAllTheSame) {
    const TemporaryFolder folder;
    const PresetFolder presets(folder.path() / "Presets", "Layers");
    for (const char* name :
         {"..", "...", ".tmp-", "console", "com10", "com", "LPTX", " a ", "Ü & co", "~", "$HOME", "%PATH%"}) {
        ASSERT_TRUE(presets.write(name, "<Layers/>")) << name;
        EXPECT_TRUE(presets.read(name)) << name;
        EXPECT_EQ(presets.names(), std::vector<std::string>{name});
        EXPECT_TRUE(presets.remove(name)) << name;
        EXPECT_EQ(filesBelow(folder.path()), 1U) << name;
    }
}

} // namespace
