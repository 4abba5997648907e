// The rules, applied to the sources of this repository.
#include "structure/Rules.h"

#include <gtest/gtest.h>

namespace {

using namespace Structure;

std::string listed(const Faults& faults) {
    std::string list;
    for (const Fault& fault : faults) {
        list += "\n" + fault.text();
    }
    return list;
}

const std::filesystem::path root = TEMBREL_SOURCE_DIR;

const SourceTree& sources() {
    static const SourceTree tree = SourceTree::read(root / "src");
    return tree;
}

TEST(Tree, IsRead) {
    EXPECT_TRUE(sources().contains("core/QelIF.h"));
    EXPECT_GT(sources().files().size(), 10U);
}
TEST(Tree, IncludesPointDownward) {
    EXPECT_EQ(listed(upwardIncludes(sources())), "");
}
TEST(Tree, IncludesHaveNoCycle) {
    EXPECT_EQ(listed(includeCycles(sources())), "");
}
TEST(Tree, SystemsAreToldApartInPlatformOnly) {
    EXPECT_EQ(listed(systemConditions(sources())), "");
}
TEST(Tree, OnlyDesktopSeesQt) {
    EXPECT_EQ(listed(toolkitIncludes(sources())), "");
}
TEST(Tree, LongFilesSayWhy) {
    EXPECT_EQ(listed(longFiles(sources())), "");
}
TEST(Tree, SpeaksForItself) {
    EXPECT_EQ(listed(strayReferences(SourceTree::read(root))), "");
}

} // namespace
