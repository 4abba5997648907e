// What a selection means in a list of things.
#pragma once

#include "values/SelectType.h"

#include <vector>

namespace Backend {

// The places in a list of `size` that `which` addresses: "selected" the one at `selected`, "up" and "down" its next
// and previous neighbour, from the ends on to the other end; "all" every one; an index that place. What names nothing
// (no such index; nothing selected; an empty list) gives no place.
[[nodiscard]] std::vector<int> addressedPlaces(const SelectType& which, int selected, int size);

// The place that is selected after `which` was chosen as a new selection: as above, where "selected", "all" and what
// names nothing leave it as it is. With nothing selected "up" gives the first place and "down" the last.
[[nodiscard]] int selectedPlace(const SelectType& which, int selected, int size);

} // namespace Backend
