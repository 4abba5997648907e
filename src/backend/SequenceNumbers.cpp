#include "backend/SequenceNumbers.h"

#include "generators/SequenceText.h"

#include <array>
#include <cstdio>

namespace Backend::SequenceManagement {

namespace {

// The names of the files behind the three digits with which they begin, by that number. What repeats is made of them.
constexpr std::array<std::string_view, 22> intervals{
    "Oct 1 Up",
    "Oct 2 Up",
    "Oct 3 Up",
    "Oct 1 Down",
    "Oct 2 Down",
    "Oct 3 Down",
    "Oct 2 Up-Down",
    "Oct 3 Up-Down",
    "Oct 2 Down-Up",
    "Oct 3 Down-Up",
    "5th Up",
    "5th Down",
    "5th Oct Up",
    "5th Oct Down",
    "5th Oct 5th Up",
    "5th Oct 5th Down",
    "5th Oct Up-Down",
    "5th Oct Down-Up",
    "5th Oct 5th Up-Down",
    "5th Oct 5th Down-Up",
    "m2 Up",
    "m2 Down",
};
constexpr std::array noteCounts{2, 3, 4, 6, 8};

constexpr int firstSeq = 23; // file numbers
constexpr int firstDrums = 34;
constexpr int firstGate = 45;
constexpr int firstNote = 50;
constexpr int firstTwice = 73;

std::string noteName(int place) {
    for (const int count : noteCounts) {
        if (place < count) {
            return "Note " + std::to_string(place + 1) + " of " + std::to_string(count);
        }
        place -= count;
    }
    return {};
}

std::string fileName(int file) {
    std::array<char, 8> digits{};
    std::snprintf(digits.data(), digits.size(), "%03d - ", file);
    std::string name(digits.data());
    if (file < firstSeq) {
        return name + std::string(intervals[static_cast<std::size_t>(file - 1)]);
    }
    if (file < firstDrums) {
        return name + "Seq " + std::to_string(file - firstSeq);
    }
    if (file < firstGate) {
        return name + "Drums " + std::to_string(file - firstDrums + 1);
    }
    if (file < firstNote) {
        return name + "Gate " + std::to_string(file - firstGate + 1);
    }
    if (file < firstTwice) {
        return name + noteName(file - firstNote);
    }
    return name + std::string(intervals[static_cast<std::size_t>(file - firstTwice)]) + " (2)";
}

struct BuiltIn {
    int number;
    std::string_view name;
    std::string_view steps;
};
constexpr std::array builtIns{
    BuiltIn{75, "Every Second", "0,-"},
    BuiltIn{89, "Accents of Four", "0 V20,0 V-20,0,0 V-20"},
};

} // namespace

std::optional<std::string> sequenceName(int number) {
    constexpr int ninthDrums = 44; // deliberately twice: stored numbers rely on it
    constexpr int noSequence = 74;
    if (number >= 0 && number <= 48) {
        return fileName(number == ninthDrums ? 42 : number + 1);
    }
    if (number >= 49 && number <= 71) {
        return fileName(number + 1);
    }
    if (number == noSequence) {
        return std::string();
    }
    for (const BuiltIn& builtIn : builtIns) {
        if (number == builtIn.number) {
            return std::string(builtIn.name);
        }
    }
    if (number >= 90 && number < sequenceNumbers) {
        return fileName(number - 90 + firstTwice);
    }
    return std::nullopt;
}

std::optional<Sequence> builtInSequence(const std::string& name) {
    for (const BuiltIn& builtIn : builtIns) {
        if (name == builtIn.name) {
            return sequenceOf(builtIn.steps);
        }
    }
    return std::nullopt;
}

SequenceSetting numberedSetting(const std::string& name, int mode) {
    SequenceSetting setting;
    setting.preset = name;
    setting.useNote = mode != 1;
    setting.useVelocity = mode == 1 || mode == 2;
    return setting;
}

} // namespace Backend::SequenceManagement
