// The elements of one section of a program, each known by its id.
#pragma once

#include "input/HashMap.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

namespace Backend::Component {

// An id is there once: storing replaces. Ids are hashable and comparable. Elements are walked in the order in which
// their ids came.
template <typename Id, typename Element> class ElementCollection {
public:
    Element& store(const Id& id, Element element) { return elements_.store(id, std::move(element)); }
    [[nodiscard]] const Element* find(const Id& id) const { return elements_.find(id); }
    [[nodiscard]] Element* find(const Id& id) { return elements_.find(id); }
    bool remove(const Id& id) { return elements_.remove(id); }
    void clear() { elements_.clear(); }
    [[nodiscard]] std::size_t size() const noexcept { return elements_.size(); }
    [[nodiscard]] bool empty() const noexcept { return elements_.empty(); }

    // The merge rule, called before the elements of a section are read and stored: without merge the section is what
    // will be read, with it that is added to what is here.
    void beginReading(bool merge) {
        if (!merge) {
            clear();
        }
    }

    // Adds the elements of the other; they replace those with the same ids.
    void merge(const ElementCollection& other) {
        for (const auto& [id, element] : other) {
            store(id, element);
        }
    }

    // The collection outlives its iterators and is not changed meanwhile.
    [[nodiscard]] std::unique_ptr<IteratorIF<Element>> createIterator() {
        return std::make_unique<HashMapIterator<Id, Element>>(elements_);
    }
    [[nodiscard]] std::unique_ptr<ConstIteratorIF<Element>> createConstIterator() const {
        return std::make_unique<ConstHashMapIterator<Id, Element>>(elements_);
    }
    // Pairs of id and element.
    [[nodiscard]] auto begin() const noexcept { return elements_.begin(); }
    [[nodiscard]] auto end() const noexcept { return elements_.end(); }

    // True when both hold the same actions in whatever order. An element gives its part in that by activePart(): itself
    // without what does nothing, or nothing when it does nothing at all.
    [[nodiscard]] bool hasSameActions(const ElementCollection& other) const {
        return activeElements().hasSameElements(other.activeElements());
    }
    // The same of all elements, also those that do nothing.
    [[nodiscard]] bool hasSameElements(const ElementCollection& other) const {
        if (size() != other.size()) {
            return false;
        }
        for (const auto& [id, element] : elements_) {
            const Element* const counterpart = other.find(id);
            if (counterpart == nullptr || !(*counterpart == element)) {
                return false;
            }
        }
        return true;
    }

private:
    [[nodiscard]] ElementCollection activeElements() const {
        ElementCollection active;
        for (const auto& [id, element] : elements_) {
            if (std::optional<Element> part = element.activePart()) {
                active.store(id, std::move(*part));
            }
        }
        return active;
    }

    HashMap<Id, Element> elements_;
};

} // namespace Backend::Component
