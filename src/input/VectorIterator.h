// Iterators over a vector, which outlives them and keeps its size meanwhile.
#pragma once

#include "input/Iterators.h"

#include <cstddef>
#include <cstdint>
#include <vector>

template <typename Element> class VectorIterator final : public IteratorIF<Element> {
public:
    // Starts at `index`; a negative one is the end.
    explicit VectorIterator(std::vector<Element>& elements, std::int32_t index = 0)
        : elements_(elements), index_(index) {}

    bool hasNext() const override { return index_ >= 0 && static_cast<std::size_t>(index_) < elements_.size(); }
    Element* next() override { return hasNext() ? &elements_[static_cast<std::size_t>(index_++)] : nullptr; }

private:
    std::vector<Element>& elements_;
    std::int32_t index_;
};

template <typename Element> class ConstVectorIterator final : public ConstIteratorIF<Element> {
public:
    explicit ConstVectorIterator(const std::vector<Element>& elements, std::int32_t index = 0)
        : elements_(elements), index_(index) {}

    bool hasNext() const override { return index_ >= 0 && static_cast<std::size_t>(index_) < elements_.size(); }
    const Element* next() override { return hasNext() ? &elements_[static_cast<std::size_t>(index_++)] : nullptr; }

private:
    const std::vector<Element>& elements_;
    std::int32_t index_;
};
