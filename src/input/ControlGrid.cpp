#include "input/ControlGrid.h"

#include <algorithm>
#include <optional>

namespace Backend::Controls {

namespace {

using Kind = SelectControlType::Kind;

std::vector<Cell> allCells(const ControlMap& map) {
    std::vector<Cell> cells;
    for (const auto& [cell, control] : map) {
        cells.push_back(cell);
    }
    std::sort(cells.begin(), cells.end());
    return cells;
}

bool isOnGrid(const Cell& cell) {
    return cell.x >= 0 && cell.y >= 0;
}

// How far `to` lies from `from` in that direction; nothing when it does not.
std::optional<std::int64_t> distance(const Cell& from, const Cell& to, Kind direction) {
    const bool alongColumn = direction == Kind::up || direction == Kind::down;
    if (alongColumn ? from.y != to.y : from.x != to.x) {
        return std::nullopt;
    }
    const std::int64_t forward =
        alongColumn ? std::int64_t{to.x} - from.x : std::int64_t{to.y} - from.y; // downward, to the right
    const std::int64_t steps = direction == Kind::up || direction == Kind::left ? -forward : forward;
    return steps > 0 ? std::optional(steps) : std::nullopt;
}

std::optional<Cell> nextControl(const std::vector<Cell>& cells, const std::set<Cell>& selection, Kind direction) {
    const auto start = std::find_if(selection.begin(), selection.end(), isOnGrid);
    std::optional<Cell> nearest;
    std::int64_t shortest = 0;
    for (const Cell& cell : cells) {
        if (!isOnGrid(cell)) {
            continue;
        }
        if (start == selection.end()) {
            return cell;
        }
        const std::optional<std::int64_t> steps = distance(*start, cell, direction);
        if (steps && (!nearest || *steps < shortest)) {
            nearest = cell;
            shortest = *steps;
        }
    }
    return nearest;
}

} // namespace

std::vector<Cell> addressedControls(const SelectControlType& which, const ControlMap& map,
                                    const std::set<Cell>& selection) {
    switch (which.getKind()) {
    case Kind::fixed:
        return map.find(which.getCell()) != nullptr ? std::vector{which.getCell()} : std::vector<Cell>{};
    case Kind::all:
        return allCells(map);
    case Kind::selected: {
        std::vector<Cell> cells(selection.begin(), selection.end());
        std::erase_if(cells, [&map](const Cell& cell) { return map.find(cell) == nullptr; });
        return cells;
    }
    default:
        break;
    }
    const std::optional<Cell> next = nextControl(allCells(map), selection, which.getKind());
    return next ? std::vector{*next} : std::vector<Cell>{};
}

std::set<Cell> selectedControls(const SelectControlType& which, const ControlMap& map,
                                const std::set<Cell>& selection) {
    const std::vector<Cell> cells = addressedControls(which, map, selection);
    return cells.empty() ? selection : std::set<Cell>(cells.begin(), cells.end());
}

} // namespace Backend::Controls
