// A hash map that is walked in the order in which its ids were first stored, so that what is written to a file has an
// order of its own.
#pragma once

#include "input/Iterators.h"

#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

// Removing costs a walk through the map; all else is constant.
template <typename Id, typename Element> class HashMap final {
public:
    using Node = std::pair<Id, Element>;
    using Nodes = std::vector<Node>;

    // Replaces the element that is there, in its place.
    Element& store(const Id& id, Element element) {
        const auto [place, isNew] = places_.try_emplace(id, nodes_.size());
        if (isNew) {
            return nodes_.emplace_back(id, std::move(element)).second;
        }
        Element& stored = nodes_[place->second].second;
        stored = std::move(element);
        return stored;
    }
    // Null when there is none.
    [[nodiscard]] const Element* find(const Id& id) const {
        const auto place = places_.find(id);
        return place == places_.end() ? nullptr : &nodes_[place->second].second;
    }
    [[nodiscard]] Element* find(const Id& id) { return const_cast<Element*>(std::as_const(*this).find(id)); }
    // False when there is none.
    bool remove(const Id& id) {
        const auto place = places_.find(id);
        if (place == places_.end()) {
            return false;
        }
        const std::size_t gap = place->second;
        places_.erase(place);
        nodes_.erase(nodes_.begin() + static_cast<std::ptrdiff_t>(gap));
        for (std::size_t i = gap; i < nodes_.size(); ++i) {
            places_[nodes_[i].first] = i;
        }
        return true;
    }
    void clear() {
        places_.clear();
        nodes_.clear();
    }

    [[nodiscard]] std::size_t size() const noexcept { return nodes_.size(); }
    [[nodiscard]] bool empty() const noexcept { return nodes_.empty(); }
    [[nodiscard]] typename Nodes::const_iterator begin() const noexcept { return nodes_.begin(); }
    [[nodiscard]] typename Nodes::const_iterator end() const noexcept { return nodes_.end(); }

private:
    template <typename, typename> friend class HashMapIterator;

    std::unordered_map<Id, std::size_t> places_; // in nodes_
    Nodes nodes_;
};

// The map outlives its iterators and is not changed meanwhile.
template <typename Id, typename Element> class HashMapIterator final : public IteratorIF<Element> {
public:
    explicit HashMapIterator(HashMap<Id, Element>& map) : map_(map), node_(map.nodes_.begin()) {}

    bool hasNext() const override { return node_ != map_.end(); }
    Element* next() override { return hasNext() ? &(node_++)->second : nullptr; }

private:
    HashMap<Id, Element>& map_;
    typename HashMap<Id, Element>::Nodes::iterator node_;
};

template <typename Id, typename Element> class ConstHashMapIterator final : public ConstIteratorIF<Element> {
public:
    explicit ConstHashMapIterator(const HashMap<Id, Element>& map) : map_(map), node_(map.begin()) {}

    bool hasNext() const override { return node_ != map_.end(); }
    const Element* next() override { return hasNext() ? &(node_++)->second : nullptr; }

private:
    const HashMap<Id, Element>& map_;
    typename HashMap<Id, Element>::Nodes::const_iterator node_;
};
