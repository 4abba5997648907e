#include "generators/recording/RecordRig.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

// The system's own full disk, in the place of the buffer.
TEST(RecordWriter, AFullDiskLosesOnlyWhatComesWhileItIsFull) {
    RecordRig rig;
    rig.play(0, 0x90, 60, 1);
    rig.flush();
    const fs::path current = rig.buffers() / "_current.tmp";
    const fs::path kept = rig.folder.path() / "kept";
    fs::rename(current, kept);
    fs::create_symlink("/dev/full", current);
    rig.start({}); // opens the full one
    rig.play(5, 0x90, 61, 1);
    for (int second = 0; second < 3; ++second) {
        rig.flush();
        rig.play(1000, 0x90, 62, 1);
    }
    ASSERT_EQ(rig.remarks.size(), 1U);
    EXPECT_NE(rig.remarks[0].find("_current.tmp: No space left on device"), std::string::npos) << rig.remarks[0];
    fs::remove(current);
    rig.now += 1000;
    rig.flush();
    rig.play(0, 0x90, 63, 1);
    rig.flush();
    EXPECT_EQ(rig.remarks.size(), 2U);
    EXPECT_EQ(rig.writer->missed(), 3U);
    EXPECT_EQ(rig.writer->takes().at(0).notes, 2U) << "the one that was to be written, and the one after";
}

} // namespace
