#include "EngineRig.h"

#include "generators/SequenceText.h"
#include "midiengine/LayerXml.h"
#include "platform/XmlDocument.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>

using Backend::engineTimeOrigin;
using Backend::Ticks;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

namespace {

std::vector<std::string> parts(const std::string& text, const std::string& separator) {
    std::vector<std::string> result;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        result.push_back(text.substr(begin, end - begin));
        begin = end + separator.size();
    }
    return result;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "; ") + line;
    }
    return text;
}

Ticks engineTime(int tick) {
    return engineTimeOrigin + Ticks{tick};
}

} // namespace

Backend::Layers::LayerList layersOf(const std::string& elements) {
    const auto section = Platform::parseXml("<Layers>" + elements + "</Layers>", "test");
    EXPECT_TRUE(section) << elements;
    Backend::Layers::LayerList layers;
    Backend::Layers::readLayers(section.value(), layers);
    for (std::size_t i = 0; i < layers.size(); ++i) { // not stored in files
        layers[i].solo = section.value().children[i].attribute("solo") != nullptr;
        if (auto& sequence = layers[i].sequence) { // named by its own text
            using namespace Backend::SequenceManagement;
            sequence->sequence = std::make_shared<Sequence>(sequenceOf(sequence->preset));
        }
    }
    return layers;
}

Backend::Zones::ZoneMap zonesOf(const std::string& zones) {
    Backend::Zones::ZoneMap map;
    for (const std::string& zone : parts(zones, " ")) {
        const std::size_t colon = zone.find(':');
        Backend::Zones::Zone one;
        one.id = static_cast<std::int8_t>(std::stoi(zone.substr(0, colon)));
        one.transpose = static_cast<std::int8_t>(std::stoi(zone.substr(colon + 1)));
        map.set(one);
    }
    return map;
}

QelMidiMessage eventOf(const std::string& text) {
    static const std::map<std::string, MessageType> types{
        {"on", MessageType::noteOn},
        {"off", MessageType::noteOff},
        {"cc", MessageType::controllerChange},
        {"bend", MessageType::pitchBend},
        {"program", MessageType::programChange},
    };
    std::map<std::string, int> ways{{"in", 0}, {"out", -1}, {"ch", -1}, {"zone", -1}};
    std::istringstream words(text);
    std::string word;
    words >> word;
    const MessageType type = types.at(word);
    std::vector<int> data;
    while (words >> word) {
        if (const std::size_t equals = word.find('='); equals != std::string::npos) {
            ways.at(word.substr(0, equals)) = std::stoi(word.substr(equals + 1));
        } else {
            data.push_back(std::stoi(word));
        }
    }
    const auto small = [](int number) { return static_cast<std::int8_t>(number); };
    return {type,
            small(data.at(0)),
            small(data.size() > 1 ? data[1] : 64),
            small(ways["ch"]),
            small(ways["out"]),
            small(ways["zone"]),
            small(ways["in"]),
            Backend::noTicks};
}

EngineRig::EngineRig(const std::string& layers, const std::string& zones) : inputs(2), outputs(3) {
    for (auto& port : inputs) {
        port.enabled = true;
    }
    for (auto& port : outputs) {
        port.enabled = true;
    }
    engine.setMidiInputPorts(inputs);
    engine.setMidiOutputPorts(outputs);
    engine.setDefaultMidiOutput(0);
    engine.setMidiThru(true);
    engine.setLayerList(layersOf(layers));
    engine.setZoneMap(zonesOf(zones));
    slice(0, 0);
}

void EngineRig::run(const std::string& steps) {
    for (const std::string& step : parts(steps, "; ")) {
        runStep(step);
    }
}

std::string EngineRig::play(const std::string& steps) {
    run(steps);
    return takePlayed();
}

std::string EngineRig::takePlayed() {
    return joined(player.takeLines());
}

void EngineRig::slice(int from, int to) {
    engine.playTimeSlice(engineTime(from), engineTime(to));
}

void EngineRig::playTick(const std::vector<QelMidiMessage>& events) {
    engine.addPending(events);
    slice(tick, tick);
    slice(tick, tick + 1);
    ++tick;
}

void EngineRig::openOutput(int port, bool open) {
    engine.enableMidiOutput(port, open);
    outputs[static_cast<std::size_t>(port)].enabled = open;
    engine.setMidiOutputPorts(outputs);
}

void EngineRig::openInput(int port, bool open) {
    engine.enableMidiInput(port, open);
    inputs[static_cast<std::size_t>(port)].enabled = open;
    engine.setMidiInputPorts(inputs);
}

void EngineRig::plug(int port, bool present) {
    if (!present) {
        player.unplug(port);
    }
    outputs[static_cast<std::size_t>(port)].enabled = present;
    outputs[static_cast<std::size_t>(port)].present = present;
    engine.setMidiOutputPorts(outputs);
}

void EngineRig::runStep(const std::string& step) {
    std::istringstream words(step);
    std::string command;
    words >> command;
    std::string rest;
    std::getline(words >> std::ws, rest);
    const auto number = [&rest] { return std::stoi(rest); };
    const auto on = [&rest] { return rest.ends_with("on"); };
    if (command == "default") {
        engine.setDefaultMidiOutput(number());
    } else if (command == "thru") {
        engine.setMidiThru(on());
    } else if (command == "zones") {
        engine.setZoneMap(zonesOf(rest));
    } else if (command == "zone") {
        Backend::Zones::Zone zone;
        zone.id = static_cast<std::int8_t>(number());
        zone.transpose = static_cast<std::int8_t>(std::stoi(rest.substr(rest.find(' '))));
        engine.setZone(zone);
    } else if (command == "layers") {
        engine.setLayerList(layersOf(rest));
    } else if (command == "wait") {
        for (int left = number(); left > 1; --left) {
            playTick();
        }
    } else if (command == "with") { // the next step's tick, behind this one's event
        engine.addPending(eventOf(rest));
        return;
    } else if (command == "reset") {
        engine.sendReset();
    } else if (command == "hardreset") {
        engine.sendHardReset();
    } else if (command == "output") {
        openOutput(number(), on());
    } else if (command == "input") {
        openInput(number(), on());
    } else if (command == "plug" || command == "unplug") {
        plug(number(), command == "plug");
    } else {
        playTick({eventOf(step)});
        return;
    }
    playTick();
}
