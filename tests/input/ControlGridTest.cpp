#include "input/ControlGrid.h"

#include "input/ControlDefaults.h"

#include <gtest/gtest.h>

namespace {

using namespace Backend::Controls;

std::string textOf(const std::set<Cell>& cells) {
    std::string text;
    for (const Cell& cell : cells) {
        text += (text.empty() ? "" : " ") + cell.toXmlString();
    }
    return text;
}

std::set<Cell> cellsOf(const std::vector<Cell>& cells) {
    return {cells.begin(), cells.end()};
}

// On the built-in controls: row 0 has columns 0 to 7, row 2 has columns 0 to 4.
TEST(ControlGrid, GoesFromControlToControl) {
    struct Row {
        std::set<Cell> selected;
        const char* which;
        std::string addressed;
        std::string thenSelected;
    };
    const Row rows[] = {
        {{}, "up", "0,0", "0,0"},
        {{}, "right", "0,0", "0,0"},
        {{}, "selected", "", ""},
        {{}, "2,3", "2,3", "2,3"},
        {{{0, 0}}, "right", "0,1", "0,1"},
        {{{0, 0}}, "down", "2,0", "2,0"}, // over the empty row
        {{{2, 0}}, "up", "0,0", "0,0"},
        {{{2, 4}}, "left", "2,3", "2,3"},
        {{{0, 0}}, "up", "", "0,0"}, // the edges stop
        {{{0, 0}}, "left", "", "0,0"},
        {{{0, 7}}, "right", "", "0,7"},
        {{{2, 4}}, "right", "", "2,4"},
        {{{0, 6}}, "down", "", "0,6"}, // nothing in that column
        {{{0, 2}}, "1,0", "", "0,2"},  // an empty cell
        {{{0, 2}}, "99,-3", "", "0,2"},
        {{{0, 2}}, "nonsense", "", "0,2"},
        {{{0, 2}}, "selected", "0,2", "0,2"},
        {{{2, 1}, {0, 2}}, "selected", "0,2 2,1", "0,2 2,1"},
        {{{2, 1}, {0, 2}}, "right", "0,3", "0,3"}, // from the first of several
        {{{0, 2}},
         "all",
         "0,0 0,1 0,2 0,3 0,4 0,5 0,6 0,7 2,0 2,1 2,2 2,3 2,4",
         "0,0 0,1 0,2 0,3 0,4 0,5 0,6 0,7 2,0 2,1 2,2 2,3 2,4"},
    };
    for (const Row& row : rows) {
        const SelectControlType which{std::string_view(row.which)};
        const std::string what = textOf(row.selected) + " " + row.which;
        EXPECT_EQ(textOf(cellsOf(addressedControls(which, defaultControls(), row.selected))), row.addressed) << what;
        EXPECT_EQ(textOf(selectedControls(which, defaultControls(), row.selected)), row.thenSelected) << what;
    }
}

TEST(ControlGrid, LeavesOutWhatIsNotOnIt) {
    ControlMap map;
    for (const Cell& cell : {Cell{3, 1}, Cell{-1, -1}, Cell{0, 5}, Cell{3, -1}}) {
        map.store(cell, Control{cell});
    }
    const auto selected = [&](const char* which, const std::set<Cell>& before) {
        return textOf(selectedControls(SelectControlType{std::string_view(which)}, map, before));
    };
    EXPECT_EQ(selected("down", {}), "0,5");
    EXPECT_EQ(selected("left", {{3, 1}}), "3,1");
    EXPECT_EQ(selected("-1,-1", {}), "-1,-1");
    EXPECT_EQ(selected("right", {{-1, -1}}), "0,5");
    EXPECT_EQ(selected("all", {}), "-1,-1 0,5 3,-1 3,1");
    EXPECT_EQ(textOf(cellsOf(addressedControls(SelectControlType{}, map, {{0, 5}, {9, 9}}))), "0,5");
    EXPECT_EQ(selected("up", {}), selected("right", {}));
    EXPECT_TRUE(addressedControls(SelectControlType{std::string_view("up")}, ControlMap{}, {}).empty());
}

} // namespace
