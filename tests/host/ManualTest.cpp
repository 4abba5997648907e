#include "host/Rendering.h"
#include "support/FileContent.h"

#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace {

std::set<std::string> matches(const std::string& text, const char* pattern) {
    const std::regex expression(pattern);
    std::set<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at) {
        found.insert((*at)[1]);
    }
    return found;
}

// The man page names the verbs and options that the program has, and no other.
TEST(Manual, TellsWhatTheProgramCan) {
    std::string manual = TestSupport::contentOf(TEMBREL_SOURCE_DIR "/data/tembrel.1");
    manual = std::regex_replace(manual, std::regex(R"(\\-)"), "-");
    std::set<std::string> options = {"--help"};
    for (const std::string& verb : matches(runTembrel({"--help"}).output, R"(\n  ([a-z]+) )")) {
        EXPECT_TRUE(std::regex_search(manual, std::regex("\n\\.B[IR]? " + verb + "\\b"))) << verb;
        options.merge(matches(runTembrel({verb, "--help"}).output, R"((--[a-z-]+))"));
    }
    EXPECT_EQ(matches(manual, R"((--[a-z][a-z-]*))"), options);
}

} // namespace
