// The ports of one direction, each in its place for as long as the program runs.
#pragma once

#include <string>
#include <vector>

namespace Host {

enum class PortDirection { in, out }; // in: what we read from, out: what we write to

// A port is known by its place and found again by its name: one that vanishes keeps its place, and takes it again when
// it returns. Ports of equal name are told apart by their order. Used under the owner's lock.
class PortRoster final {
public:
    static constexpr int maxPlaces = 128;

    struct Port {
        std::string name;
        bool present = false;
        bool wanted = false; // to be open whenever it is present
        bool open = false;
    };
    struct Changes {
        std::vector<int> vanished; // were present; `open` is theirs to clear
        std::vector<int> appeared; // are new, or have returned
        [[nodiscard]] bool any() const { return !vanished.empty() || !appeared.empty(); }
    };

    // Compares with the names that the system has now. New ports go to the end, up to maxPlaces; they are not wanted.
    Changes update(const std::vector<std::string>& names);

    [[nodiscard]] std::vector<Port>& ports() { return ports_; }
    [[nodiscard]] const std::vector<Port>& ports() const { return ports_; }
    [[nodiscard]] bool has(int place) const { return place >= 0 && place < static_cast<int>(ports_.size()); }
    [[nodiscard]] Port& at(int place) { return ports_[static_cast<std::size_t>(place)]; }

private:
    std::vector<Port> ports_;
};

} // namespace Host
