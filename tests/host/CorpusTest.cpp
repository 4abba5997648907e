#include "host/PerformanceScript.h"
#include "host/SmfReader.h"
#include "platform/ThreadServices.h"
#include "support/FileContent.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

// Reads every file of a corpus folder: those called bad-... are refused, all others give events.
template <typename Reader> void readAll(const char* folder) {
    int count = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(TEMBREL_SOURCE_DIR "/tests/corpus/" + std::string(folder))) {
        ++count;
        const std::string name = entry.path().filename().string();
        auto read = Reader::open(TestSupport::contentOf(entry.path()), name, 2);
        EXPECT_EQ(static_cast<bool>(read), name.rfind("bad-", 0) != 0) << name;
        Host::PerformanceEvent event;
        EXPECT_TRUE(!read || read.value()->next(event)) << name;
    }
    EXPECT_GE(count, 3);
}

TEST(Corpus, MidiFilesAreReadOrRefused) {
    readAll<Host::SmfReader>("smf");
}

TEST(Corpus, ScriptsAreReadOrRefused) {
    Platform::initializeThreadServices();
    readAll<Host::PerformanceScript>("script");
    Platform::uninitializeThreadServices();
}

} // namespace
