// Walking the elements of a section without knowing what holds them.
#pragma once

template <typename Element> class IteratorIF {
public:
    virtual ~IteratorIF() = default;
    [[nodiscard]] virtual bool hasNext() const = 0;
    // The current element, and goes on to the next; null at the end.
    virtual Element* next() = 0;
};

template <typename Element> class ConstIteratorIF {
public:
    virtual ~ConstIteratorIF() = default;
    [[nodiscard]] virtual bool hasNext() const = 0;
    virtual const Element* next() = 0;
};
