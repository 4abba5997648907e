#include "generators/SequenceText.h"

#include "values/TextNumbers.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace Backend::SequenceManagement {

namespace {

using Complaint = std::function<void(const std::string&)>;

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

// Gives the parts between the separators, the last one also when it is empty.
template <typename Take> void split(std::string_view text, char separator, Take take) {
    while (true) {
        const std::size_t end = text.find(separator);
        take(trimmed(text.substr(0, end)));
        if (end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + 1);
    }
}

// The letter and the number of "V-10" or "L960".
struct Part {
    char letter = 0;
    std::optional<std::int32_t> number;
};

Part partOf(std::string_view word) {
    return {word.front(), isDecimal(word.substr(1)) ? readDecimal(word.substr(1)) : std::nullopt};
}

void readPart(std::string_view word, StepEntry& entry, const Complaint& complain) {
    const Part part = partOf(word);
    if (!part.number || (part.letter != 'V' && part.letter != 'L')) {
        complain(quoted(word) + " is neither a velocity offset (V10) nor a length (L960)");
    } else if (part.letter == 'V') {
        entry.velocityOffset = *part.number;
    } else {
        entry.length = *part.number;
        if (entry.length < 1) {
            complain("the length " + quoted(word) + " is below 1");
        }
    }
}

StepEntry readEntry(std::string_view text, const Complaint& complain) {
    StepEntry entry;
    const std::size_t end = std::min(text.find_first_of(" \t\r\n"), text.size());
    const std::string_view first = text.substr(0, end);
    const std::optional<std::int32_t> offset = readDecimal(first);
    entry.rest = !offset;
    entry.noteOffset = offset.value_or(0);
    if (text.empty()) {
        complain("an entry is empty; a rest is written \"-\"");
    } else if (first != "-" && !isDecimal(first)) {
        complain(quoted(first) + " is neither a note offset nor a rest");
    }
    split(text.substr(end), ' ', [&](std::string_view word) {
        if (!word.empty()) {
            readPart(word, entry, complain);
        }
    });
    return entry;
}

Sequence read(std::string_view text, const std::function<void(std::size_t step, const std::string&)>& complain) {
    Sequence sequence;
    text = trimmed(text);
    if (text.empty()) {
        return sequence;
    }
    if (text.back() == ',') {
        complain(0, "\",\" at the end begins no step");
        text.remove_suffix(1);
    }
    std::size_t number = 0;
    split(text, ',', [&](std::string_view stepText) {
        if (++number > maxSteps) {
            if (number == maxSteps + 1) {
                complain(number, "there are more than " + std::to_string(maxSteps) + " steps");
            }
            return;
        }
        Step& step = sequence.steps.emplace_back();
        split(stepText, '|', [&](std::string_view entry) {
            if (step.size() < maxEntries) {
                step.push_back(readEntry(entry, [&](const std::string& reason) { complain(number, reason); }));
            } else {
                complain(number, "there are more than " + std::to_string(maxEntries) + " notes");
            }
        });
    });
    return sequence;
}

} // namespace

std::string StepEntry::toXmlString() const {
    std::string text = rest ? "-" : std::to_string(noteOffset);
    if (velocityOffset != 0 && !rest) {
        text += " V" + std::to_string(velocityOffset);
    }
    if (length != usualLength) {
        text += " L" + std::to_string(length);
    }
    return text;
}

std::string textOf(const Sequence& sequence) {
    std::string text;
    for (const Step& step : sequence.steps) {
        text += &step == &sequence.steps.front() ? "" : ",";
        if (step.empty()) {
            text += "-";
        }
        for (const StepEntry& entry : step) {
            text += (&entry == &step.front() ? "" : "|") + entry.toXmlString();
        }
    }
    return text;
}

Sequence sequenceOf(std::string_view text) {
    return read(text, [](std::size_t, const std::string&) {});
}

std::vector<std::string> faultsOfSequence(std::string_view text) {
    std::vector<std::string> faults;
    read(text, [&](std::size_t step, const std::string& reason) {
        faults.push_back(step == 0 ? reason : "step " + std::to_string(step) + ": " + reason);
    });
    return faults;
}

} // namespace Backend::SequenceManagement
