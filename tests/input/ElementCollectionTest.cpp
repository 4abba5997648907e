#include "input/ElementCollection.h"

#include "input/VectorIterator.h"
#include "support/RandomCases.h"

#include <algorithm>
#include <gtest/gtest.h>

using Backend::Component::ElementCollection;

namespace {

// Odd numbers do nothing.
struct Number {
    int value = 0;
    [[nodiscard]] std::optional<Number> activePart() const {
        return value % 2 == 0 ? std::optional(*this) : std::nullopt;
    }
    friend bool operator==(const Number&, const Number&) = default;
};
using Numbers = ElementCollection<int, Number>;

template <typename Iterator> std::vector<int> walked(Iterator& iterator) {
    std::vector<int> values;
    while (iterator.hasNext()) {
        values.push_back(iterator.next()->value);
    }
    EXPECT_EQ(iterator.next(), nullptr);
    return values;
}

std::vector<int> valuesOf(const Numbers& numbers) {
    return walked(*numbers.createConstIterator());
}

// Against a map and a list that do the same in the simplest way.
TEST(ElementCollection, HoldsEachIdOnceInTheOrderOfItsComing) {
    RandomCases random;
    Numbers numbers;
    std::vector<std::pair<int, int>> model;
    for (int i = 0; i < 5000; ++i) {
        const int id = random.number(0, 30);
        const auto known = std::find_if(model.begin(), model.end(), [&](const auto& each) { return each.first == id; });
        switch (random.number(0, 60)) {
        case 0:
            numbers.clear();
            model.clear();
            break;
        default:
            if (known != model.end()) {
                known->second = i;
            } else {
                model.emplace_back(id, i);
            }
            EXPECT_EQ(numbers.store(id, {i}).value, i);
            break;
        case 1:
        case 2:
        case 3:
            EXPECT_EQ(numbers.remove(id), known != model.end());
            if (known != model.end()) {
                model.erase(known);
            }
            break;
        }
        std::vector<int> expected;
        for (const auto& [knownId, value] : model) {
            expected.push_back(value);
            ASSERT_NE(numbers.find(knownId), nullptr);
            ASSERT_EQ(numbers.find(knownId)->value, value);
        }
        ASSERT_EQ(valuesOf(numbers), expected);
        ASSERT_EQ(numbers.size(), model.size());
    }
}

TEST(ElementCollection, GivesItsElementsToChange) {
    Numbers numbers;
    EXPECT_FALSE(numbers.createIterator()->hasNext());
    EXPECT_EQ(numbers.createIterator()->next(), nullptr);
    numbers.store(7, {1});
    numbers.store(3, {2});
    const Numbers before = numbers;
    const auto iterator = numbers.createIterator();
    while (iterator->hasNext()) {
        iterator->next()->value += 10;
    }
    EXPECT_EQ(valuesOf(numbers), (std::vector{11, 12}));
    EXPECT_EQ(valuesOf(before), (std::vector{1, 2}));
}

TEST(ElementCollection, MergesOrReplaces) {
    for (const bool merge : {false, true}) {
        for (const int id : {5, 50}) {
            Numbers numbers;
            for (int i = 0; i < 10; ++i) {
                numbers.store(i, {i});
            }
            numbers.beginReading(merge);
            numbers.store(id, {99});
            EXPECT_EQ(numbers.size(), !merge ? 1U : id == 5 ? 10U : 11U);
            EXPECT_EQ(numbers.find(id)->value, 99);
        }
    }
}

TEST(ElementCollection, ComparesWhatActs) {
    Numbers a;
    Numbers b;
    EXPECT_TRUE(a.hasSameActions(b));
    a.store(1, {2});
    a.store(2, {4});
    a.store(3, {1});
    b.store(2, {4});
    b.store(9, {3});
    EXPECT_FALSE(a.hasSameActions(b));
    b.store(1, {2});
    EXPECT_TRUE(a.hasSameActions(b));
    b.store(1, {6});
    EXPECT_FALSE(a.hasSameActions(b));
    b.remove(1);
    b.store(4, {2});
    EXPECT_FALSE(b.hasSameActions(a));
}

TEST(VectorIterators, StartWhereTheyAreToldTo) {
    std::vector<Number> numbers{{1}, {2}, {3}};
    const struct {
        int index;
        std::vector<int> values;
    } rows[] = {{0, {1, 2, 3}}, {2, {3}}, {3, {}}, {100, {}}, {-1, {}}};
    for (const auto& row : rows) {
        VectorIterator<Number> iterator(numbers, row.index);
        ConstVectorIterator<Number> constIterator(numbers, row.index);
        EXPECT_EQ(walked(iterator), row.values);
        EXPECT_EQ(walked(constIterator), row.values);
    }
    std::vector<Number> none;
    EXPECT_FALSE(VectorIterator<Number>(none).hasNext());
}

} // namespace
