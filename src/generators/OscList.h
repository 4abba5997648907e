// The oscillators of a program.
#pragma once

#include "generators/Oscillator.h"
#include "values/OscId.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Backend::Oscillators {

// In the order of their ids, which are their places. Copied by value.
class OscList final {
public:
    // More are not read.
    static constexpr std::size_t maxSize = 1024;

    // Null for a negative id and for one beyond the end.
    [[nodiscard]] const Oscillator* find(OscId id) const;
    [[nodiscard]] Oscillator* find(OscId id);
    // Gives the oscillator the next id; beyond maxSize it is left out.
    void append(Oscillator oscillator);
    // New records have the defaults, id -1 among them.
    void resize(std::size_t size) { oscillators_.resize(size); }
    void clear() { oscillators_.clear(); }
    [[nodiscard]] std::size_t size() const noexcept { return oscillators_.size(); }
    [[nodiscard]] bool empty() const noexcept { return oscillators_.empty(); }

    [[nodiscard]] auto begin() const noexcept { return oscillators_.begin(); }
    [[nodiscard]] auto end() const noexcept { return oscillators_.end(); }
    [[nodiscard]] auto begin() noexcept { return oscillators_.begin(); }
    [[nodiscard]] auto end() noexcept { return oscillators_.end(); }

    // Appends those of the other list.
    void merge(const OscList& other);
    // True when both would play the same, whatever is selected or playing.
    [[nodiscard]] bool hasSameActions(const OscList& other) const;

    // The preset that the section was last loaded from or saved as; may be empty.
    std::string presetName;

private:
    std::vector<Oscillator> oscillators_;
};

} // namespace Backend::Oscillators
