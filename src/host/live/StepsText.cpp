#include "host/live/StepsText.h"

#include "host/live/MessageText.h"

#include <algorithm>
#include <sstream>

namespace Host {

using Backend::MidiEngine::QelMidiMessage;
using Backend::MidiInput::Found;
using Backend::MidiInput::InputSteps;
using Backend::MidiInput::TranslationManagement::Translation;

namespace {

// The message with its way, where that is not the default one; zones and outputs as they are counted in files.
std::string sentText(const QelMidiMessage& message) {
    std::string text = textOf(message.getMidiMessage());
    if (const std::size_t channel = text.find("channel "); message.isDefaultChannel() && channel != std::string::npos) {
        const std::size_t end = std::min(text.find(',', channel), text.size());
        text.replace(channel, end - channel, "default channel");
    }
    if (message.getZone() >= 0) {
        text += ", zone " + std::to_string(message.getZone());
    }
    if (message.getOutput() >= 0) {
        text += ", output " + std::to_string(message.getOutput());
    }
    return text;
}

std::string foundText(Found found) {
    return found == Found::nothing ? "not configured" : "configured for " + std::string(nameOf(found)) + ": ";
}

// The element of the translation without its brackets.
std::string elementOf(const Translation& translation) {
    std::ostringstream xml;
    translation.writeXml(xml, 0);
    const std::string text = xml.str();
    const std::size_t begin = text.find('<') + 1;
    return text.substr(begin, text.rfind("/>") - begin);
}

std::string conditionText(const InputSteps::Tried& tried, const QelMidiMessage& incoming) {
    const auto& condition = tried.translation->getCondition();
    if (condition.isOff()) {
        return "always";
    }
    return condition.toXmlString() + " with " + std::to_string(condition.comparedByte(incoming.getMidiMessage())) +
           (tried.conditionHeld ? ": holds" : ": does not hold");
}

} // namespace

std::string textOf(const InputSteps& steps, const std::string& input) {
    std::string text = input + ": " + textOf(steps.incoming.getMidiMessage()) + '\n';
    const auto add = [&text](const std::string& line) { text += "  " + line + '\n'; };
    add(foundText(steps.lookUp.found) +
        (steps.lookUp.configuration != nullptr ? steps.lookUp.configuration->event.message.toXmlString() : ""));
    for (const InputSteps::Tried& tried : steps.tried) {
        add(conditionText(tried, steps.incoming));
        if (tried.conditionHeld) {
            add(elementOf(*tried.translation) + ": " + (tried.message ? sentText(*tried.message) : "done"));
        }
    }
    if (steps.passedOn) {
        add("passed on: " + sentText(*steps.passedOn));
    }
    for (const QelMidiMessage& end : steps.ended) {
        add("ends what its key has started: " + sentText(end));
    }
    return text;
}

} // namespace Host
