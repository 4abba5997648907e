// What a selection means on the grid of controls.
#pragma once

#include "input/ControlMap.h"
#include "values/SelectControlType.h"

#include <set>
#include <vector>

namespace Backend::Controls {

// The cells that `which` addresses, by row, then column: "selected" those of `selection`, "all" every one, a cell that
// one. "up", "down", "left" and "right" go from the first selected control along its row or column to the nearest
// control, over empty cells and not beyond the edge; with nothing selected each of them is the first control. What
// names no control gives no cell. A control outside the grid, at a negative cell, is found by its cell and "all" only.
[[nodiscard]] std::vector<Cell> addressedControls(const SelectControlType& which, const ControlMap& map,
                                                  const std::set<Cell>& selection);

// What is selected after `which` was chosen as a new selection: what it addresses; what names no control leaves all as
// it is.
[[nodiscard]] std::set<Cell> selectedControls(const SelectControlType& which, const ControlMap& map,
                                              const std::set<Cell>& selection);

} // namespace Backend::Controls
