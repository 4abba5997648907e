// Each rule is shown small trees that break it and trees that come close without breaking it.
#include "structure/Rules.h"

#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <utility>

namespace {

using namespace Structure;
using Files = std::vector<std::pair<std::string, std::string>>;

struct Row {
    std::string name;
    Faults (*rule)(const SourceTree&);
    Files files;
    std::vector<std::string> faults; // as "file:line: start of the reason"
};

std::string lines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "int x;\n";
    }
    return text;
}

const std::vector<Row> rows{
    // Arrows.
    {"Downward", upwardIncludes, {{"core/A.cpp", "#include \"values/B.h\"\n"}, {"values/B.h", ""}}, {}},
    {"Upward",
     upwardIncludes,
     {{"core/A.h", ""}, {"values/B.h", "\n  # include \"core/A.h\" // why\n"}},
     {"values/B.h:2: values must not include core/A.h"}},
    {"UpwardInAngles", upwardIncludes, {{"core/A.h", ""}, {"values/B.h", "#include <core/A.h>\n"}}, {"values/B.h:1: "}},
    {"UpwardByDots",
     upwardIncludes,
     {{"core/A.h", ""}, {"values/B.h", "#include \"../core/A.h\"\n"}},
     {"values/B.h:1: values must not include core/A.h"}},
    {"SameFolderWithoutItsName", upwardIncludes, {{"core/A.h", ""}, {"core/B.h", "#include \"A.h\"\n"}}, {}},
    {"DesktopSeesTheFacade",
     upwardIncludes,
     {{"core/A.h", ""}, {"gui/B.h", ""}, {"desktop/C.cpp", "#include \"core/A.h\"\n#include \"gui/B.h\"\n"}},
     {}},
    {"DesktopPastTheFacade",
     upwardIncludes,
     {{"backend/A.h", ""}, {"desktop/C.cpp", "#include \"backend/A.h\"\n"}},
     {"desktop/C.cpp:1: desktop must not include backend/A.h"}},
    {"HostSeesAll",
     upwardIncludes,
     {{"backend/A.h", ""}, {"desktop/B.h", ""}, {"host/C.cpp", "#include \"backend/A.h\"\n#include \"desktop/B.h\"\n"}},
     {}},
    {"SystemSideFromPlatform",
     upwardIncludes,
     {{"platform/linux/A.h", ""}, {"platform/linux/A.cpp", "#include \"platform/linux/A.h\"\n"}},
     {}},
    {"SystemSideFromElsewhere",
     upwardIncludes,
     {{"platform/win32/A.h", ""}, {"host/A.cpp", "#include \"platform/win32/A.h\"\n"}},
     {"host/A.cpp:1: "}},
    {"NoSuchFile", upwardIncludes, {{"core/A.cpp", "#include \"core/B.h\"\n"}}, {"core/A.cpp:1: no such file"}},
    {"LibraryHeader", upwardIncludes, {{"core/A.cpp", "#include <vector>\n"}}, {}},
    {"NoFloor",
     upwardIncludes,
     {{"attic/A.cpp", ""}, {"B.cpp", ""}},
     {"B.cpp:0: lies on no floor", "attic/A.cpp:0: lies on no floor"}},
    // Cycles.
    {"Diamond",
     includeCycles,
     {{"core/A.h", "#include \"core/B.h\"\n#include \"core/C.h\"\n"},
      {"core/B.h", "#include \"core/D.h\"\n"},
      {"core/C.h", "#include \"core/D.h\"\n"},
      {"core/D.h", ""}},
     {}},
    {"CycleOfThree",
     includeCycles,
     {{"core/A.h", "#include \"core/B.h\"\n"},
      {"core/B.h", "#include \"core/C.h\"\n"},
      {"core/C.h", "\n#include \"core/B.h\"\n"}},
     {"core/C.h:2: cycle: core/B.h -> core/C.h -> core/B.h"}},
    {"CycleOfOne", includeCycles, {{"core/A.h", "#include \"A.h\"\n"}}, {"core/A.h:1: cycle: core/A.h -> core/A.h"}},
    // Systems.
    {"ConditionInPlatform", systemConditions, {{"platform/A.cpp", "#ifdef _WIN32\n"}}, {}},
    {"Ifdef", systemConditions, {{"core/A.cpp", "#ifdef _WIN32\n#endif\n"}}, {"core/A.cpp:1: condition on _WIN32"}},
    {"Ifndef", systemConditions, {{"core/A.cpp", "# ifndef __linux__\n"}}, {"core/A.cpp:1: condition on __linux__"}},
    {"Defined",
     systemConditions,
     {{"core/A.cpp", "#if !defined(__unix__)\n"}},
     {"core/A.cpp:1: condition on __unix__"}},
    {"Elif", systemConditions, {{"core/A.cpp", "#if 0\n#elif __APPLE__\n"}}, {"core/A.cpp:2: condition on __APPLE__"}},
    {"OnTheNextLine",
     systemConditions,
     {{"core/A.cpp", "#if 1 && \\\n    defined _WIN32\nint _WIN32;\n"}},
     {"core/A.cpp:2: condition on _WIN32"}},
    {"OtherCondition", systemConditions, {{"core/A.cpp", "#ifndef NDEBUG\n// _WIN32\n#if MY_WIN32_COPY\n"}}, {}},
    // Qt.
    {"QtInDesktop", toolkitIncludes, {{"desktop/A.cpp", "#include <QWidget>\n"}}, {}},
    {"QtClass", toolkitIncludes, {{"gui/A.cpp", "#include <QWidget>\n"}}, {"gui/A.cpp:1: Qt header"}},
    {"QtModule", toolkitIncludes, {{"gui/A.cpp", "#include <QtCore/qglobal.h>\n"}}, {"gui/A.cpp:1: Qt header"}},
    {"QtInQuotes", toolkitIncludes, {{"gui/A.cpp", "#include \"qobject.h\"\n"}}, {"gui/A.cpp:1: Qt header"}},
    {"OwnNamesWithQ", toolkitIncludes, {{"core/QelIF.h", ""}, {"gui/A.cpp", "#include \"core/QelIF.h\"\n"}}, {}},
    // Length.
    {"JustShortEnough", longFiles, {{"core/A.cpp", lines(600)}}, {}},
    {"TooLong", longFiles, {{"core/A.cpp", lines(601)}}, {"core/A.cpp:0: 601 lines"}},
    {"LongWithReason", longFiles, {{"core/A.cpp", "\n// Long because: a table.\n" + lines(700)}}, {}},
    {"ReasonTooLate",
     longFiles,
     {{"core/A.cpp", lines(20) + "// Long because: a table.\n" + lines(600)}},
     {"core/A.cpp:0: "}},
    // Words. In pieces here, as in the rule.
    {"Paper",
     strayReferences,
     {{"README.md", "\nas the Speci"
                    "fication says"}},
     {"README.md:2: names a paper"}},
    {"PaperFile",
     strayReferences,
     {{"a.cpp", "// see sp"
                "ec.md"}},
     {"a.cpp:1: names a paper"}},
    {"NumberedPart",
     strayReferences,
     {{"a.cpp", "// PART "
                "12.3: x"}},
     {"a.cpp:1: refers to a numbered part"}},
    {"Neighbour",
     strayReferences,
     {{"a.cpp", "// ../sha"
                "red/x"}},
     {"a.cpp:1: refers to a folder"}},
    {"Machine",
     strayReferences,
     {{"a.cpp", "\"/wo"
                "rk/main\""}},
     {"a.cpp:1: names a path"}},
    {"HarmlessWords",
     strayReferences,
     {{"a.cpp", "// MIDI 1.0 speci"
                "fication\ntimespec t; // specific, part 2 of 3, part 7.\n// unspecified, shared_ptr"}},
     {}},
};

class RulesTest : public testing::TestWithParam<Row> {};

TEST_P(RulesTest, FindsExactly) {
    SourceTree tree;
    for (const auto& [path, text] : GetParam().files) {
        tree.add(path, text);
    }
    const Faults faults = GetParam().rule(tree);
    ASSERT_EQ(faults.size(), GetParam().faults.size()) << (faults.empty() ? "" : faults.front().text());
    for (std::size_t i = 0; i < faults.size(); ++i) {
        EXPECT_EQ(faults[i].text().rfind(GetParam().faults[i], 0), 0U) << faults[i].text();
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, RulesTest, testing::ValuesIn(rows), [](const auto& row) { return row.param.name; });

TEST(SourceTree, ReadsFoldersButNotWhatIsMade) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("tembrel-structure-" + std::to_string(std::random_device{}()));
    for (const char* name : {"core", "build/dev", "core/build", ".git"}) {
        fs::create_directories(folder / name);
        std::ofstream(folder / name / "A.h") << "one\ntwo\n";
    }
    std::ofstream(folder / "core/picture.png", std::ios::binary).write("a\0b", 3);

    const SourceTree tree = SourceTree::read(folder);
    std::vector<std::string> paths;
    for (const auto& [path, lines] : tree.files()) {
        paths.push_back(path);
    }
    EXPECT_EQ(paths, (std::vector<std::string>{"core/A.h", "core/build/A.h"}));
    EXPECT_EQ(tree.files().at("core/A.h"), (SourceTree::Lines{"one", "two"}));
    fs::remove_all(folder);
}

} // namespace
