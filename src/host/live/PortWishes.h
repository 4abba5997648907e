// Which ports the user wants open.
#pragma once

#include <string>
#include <vector>

namespace Host {

struct PortWishes {
    std::string clientName = "Tembrel"; // how the program shows itself in the system
    std::vector<std::string> inputs;    // parts of names; empty: what the system opens by default
    std::vector<std::string> outputs;
    bool everyInput = false; // open all inputs there are, also where the user usually connects them
    bool anyOutput = true;   // false: open no output
    bool connect = false;    // connect to the first synthesizer found
    bool onlyList = false;   // open nothing, show no port of our own
};

// True when one of the parts occurs in the name; letters compare without case. [any]
[[nodiscard]] bool isNamed(const std::string& name, const std::vector<std::string>& parts);
// True for what looks like the input of a software synthesizer. [any]
[[nodiscard]] bool looksLikeSynthesizer(const std::string& name);

} // namespace Host
