#include "generators/recording/RecordFolder.h"

#include "generators/recording/BufferFiles.h"
#include "platform/SafeFiles.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <vector>

using namespace Backend::Recording;
namespace fs = std::filesystem;

namespace {

TEST(RecordFolder, BelongsToOneProgramAndKeepsThePreviousRecord) {
    const TemporaryFolder folder;
    const fs::path buffers = folder.path() / "made" / "buffers";
    EXPECT_EQ(RecordFolder::lastUsed(buffers), nullptr);
    auto first = RecordFolder::claim(buffers);
    const auto second = RecordFolder::claim(buffers);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->path(), buffers);
    EXPECT_EQ(second->path(), buffers / "_2");
    EXPECT_NE(RecordFolder::serverName(first->path()), RecordFolder::serverName(second->path()));
    EXPECT_EQ(RecordFolder::all(buffers), (std::vector{buffers, buffers / "_2"}));

    ASSERT_TRUE(Platform::replaceFile(buffers / "_0.tmp", "older"));
    ASSERT_TRUE(Platform::replaceFile(buffers / "_current.tmp", ""));
    ASSERT_TRUE(Platform::replaceFile(buffers / "_2" / "_current.tmp", "x"));
    EXPECT_EQ(RecordFolder::lastUsed(buffers), nullptr) << "both are held";
    EXPECT_TRUE(RecordFolder::isHeld(buffers) && RecordFolder::isHeld(buffers / "_2"));
    first.reset();
    EXPECT_FALSE(RecordFolder::isHeld(buffers) || RecordFolder::isHeld(folder.path()));
    ASSERT_NE(RecordFolder::lastUsed(buffers), nullptr);
    EXPECT_EQ(RecordFolder::lastUsed(buffers)->path(), buffers);
    first = RecordFolder::claim(buffers);
    EXPECT_EQ(first->path(), buffers);
    EXPECT_TRUE(BufferFiles::list(buffers).empty());
    EXPECT_EQ(BufferFiles::list(RecordFolder::previous(buffers)).size(), 2U);

    ASSERT_TRUE(Platform::replaceFile(buffers / "_current.tmp", ""));
    first.reset();
    first = RecordFolder::claim(buffers);
    EXPECT_EQ(BufferFiles::list(RecordFolder::previous(buffers)).size(), 2U) << "an empty record is no record";

    EXPECT_EQ(RecordFolder::claim(buffers / "_current.tmp" / "x"), nullptr) << "a file is in the way";
}

} // namespace
