// Buffers that somebody has opened and shares with nobody, as a program that looks at all files does.
#include "generators/recording/RecordRig.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace fs = std::filesystem;

namespace {

// As long as it lives.
class Opened final {
public:
    Opened(const fs::path& file, DWORD shared)
        : handle_(CreateFileW(file.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING, 0, nullptr)) {}
    ~Opened() {
        if (isOpen()) {
            CloseHandle(handle_);
        }
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    [[nodiscard]] bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

private:
    HANDLE handle_;
};

void playOn(RecordRig& rig, int seconds) {
    for (; seconds > 0; --seconds) {
        rig.play(1000, 0x90, 61, 1);
        rig.flush();
    }
}

TEST(RecordWriter, ABufferThatAnotherHasOpenedForItselfPausesTheRecord) {
    RecordRig rig;
    rig.writer.reset();
    {
        const Opened other(rig.buffers() / "_current.tmp", 0);
        ASSERT_TRUE(other.isOpen());
        rig.start({});
        playOn(rig, 3);
        ASSERT_EQ(rig.remarks.size(), 1U);
        EXPECT_NE(rig.remarks[0].find("the record pauses: "), std::string::npos) << rig.remarks[0];
    }
    rig.now += 1000;
    rig.flush();
    playOn(rig, 1);
    EXPECT_EQ(rig.remarks.size(), 2U);
    EXPECT_EQ(rig.writer->missed(), 3U);
    EXPECT_EQ(rig.writer->takes().at(0).notes, 1U);
}

// It may be read and written, but not moved: what is full cannot make way.
TEST(RecordWriter, ABufferThatCannotBeMovedPausesTheRecord) {
    RecordRig rig;
    playOn(rig, 1);
    rig.writer->setLimits({.fileSize = 12, .olderFiles = 1});
    {
        const Opened other(rig.buffers() / "_current.tmp", FILE_SHARE_READ | FILE_SHARE_WRITE);
        ASSERT_TRUE(other.isOpen());
        playOn(rig, 3);
        ASSERT_EQ(rig.remarks.size(), 1U);
    }
    rig.now += 1000;
    rig.flush();
    playOn(rig, 1);
    EXPECT_EQ(rig.remarks.size(), 2U);
    EXPECT_EQ(rig.writer->missed(), 3U);
    EXPECT_EQ(rig.contents().size(), 2U);
    EXPECT_EQ(rig.writer->save(rig.target(), std::nullopt).value().notes, 2U);
}

} // namespace
