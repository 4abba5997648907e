#include "backend/Selection.h"

#include <numeric>

namespace Backend {

namespace {
// -1 for none.
int stepped(int selected, int size, int step) {
    if (size == 0) {
        return -1;
    }
    if (selected < 0) {
        return step > 0 ? 0 : size - 1;
    }
    return (selected + step + size) % size;
}

int singlePlace(const SelectType& which, int selected, int size) {
    switch (which.getKind()) {
    case SelectType::Kind::up:
        return stepped(selected, size, +1);
    case SelectType::Kind::down:
        return stepped(selected, size, -1);
    case SelectType::Kind::selected:
        return selected < size ? selected : -1;
    case SelectType::Kind::fixed:
        return which.getIndex() >= 0 && which.getIndex() < size ? which.getIndex() : -1;
    case SelectType::Kind::all:
        break;
    }
    return -1;
}
} // namespace

std::vector<int> addressedPlaces(const SelectType& which, int selected, int size) {
    if (which.getKind() == SelectType::Kind::all) {
        std::vector<int> places(static_cast<std::size_t>(size));
        std::iota(places.begin(), places.end(), 0);
        return places;
    }
    const int place = singlePlace(which, selected, size);
    return place < 0 ? std::vector<int>{} : std::vector<int>{place};
}

int selectedPlace(const SelectType& which, int selected, int size) {
    const int place = singlePlace(which, selected, size);
    return place < 0 ? selected : place;
}

} // namespace Backend
