#include "host/live/PortWishes.h"

#include <algorithm>
#include <cctype>

namespace Host {

namespace {

char lower(char letter) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

bool contains(const std::string& name, const std::string& part) {
    return std::search(name.begin(), name.end(), part.begin(), part.end(),
                       [](char a, char b) { return lower(a) == lower(b); }) != name.end();
}

} // namespace

bool isNamed(const std::string& name, const std::vector<std::string>& parts) {
    return std::any_of(parts.begin(), parts.end(), [&name](const std::string& part) { return contains(name, part); });
}

bool looksLikeSynthesizer(const std::string& name) {
    static const std::vector<std::string> usual{"synth",   "fluid",    "timidity", "zynadd",       "yoshimi",
                                                "sampler", "surge",    "carla",    "linuxsampler", "amsynth",
                                                "dexed",   "pianoteq", "munt",     "wavetable"};
    return isNamed(name, usual);
}

} // namespace Host
