#include "RandomEdits.h"

#include "backend/LayerMessageManager.h"
#include "core/FolderNames.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "generators/OscList.h"
#include "generators/recording/RetroRecord.h"
#include "input/ControlMessageManager.h"
#include "midiengine/ZoneMap.h"
#include "platform/PathText.h"
#include "values/OnOffToggle.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <algorithm>

namespace Soak {

namespace {

using Backend::QelIF;
using Backend::Layers::Layer;
using Backend::Oscillators::Oscillator;
namespace FolderNames = Backend::FolderNames;

constexpr int mostLayers = 6;
constexpr int mostOscillators = 4;

} // namespace

RandomEdits::RandomEdits(std::uint64_t seed, std::filesystem::path data, int inputs, int outputs)
    : random_(seed), data_(std::move(data)), inputs_(inputs), outputs_(outputs) {
    std::error_code failure;
    for (const auto& file : std::filesystem::directory_iterator(data_ / FolderNames::sequences, failure)) {
        sequences_.push_back(Platform::textOf(file.path().stem()));
    }
    std::sort(sequences_.begin(), sequences_.end()); // the system lists them in any order
}

std::vector<std::filesystem::path> RandomEdits::takeWritten() {
    return std::exchange(written_, {});
}

void RandomEdits::post(QelIF& qel) {
    const int kind = number(0, 99);
    if (kind < 20) {
        postLayers(qel);
    } else if (kind < 50) {
        postOneLayer(qel);
    } else if (kind < 60) {
        postZones(qel);
    } else if (kind < 70) {
        postOscillators(qel);
    } else if (kind < 82) {
        postPortOrTempo(qel);
    } else if (kind < 94) {
        postSave(qel);
    } else if (kind < 97) {
        postSequence(qel);
    } else {
        postTake(qel);
    }
}

Layer RandomEdits::layer() {
    Layer layer;
    layer.mute = chance(10);
    layer.mono = chance(20);
    if (chance(20)) {
        layer.toggle = NoteToggle(chance(50) ? NoteToggle::State::type1 : NoteToggle::State::type2);
    }
    layer.useNoteStack = chance(70);
    layer.minNote = Note(chance(70) ? 0 : number(0, 80));
    layer.maxNote = Note(chance(70) ? 127 : number(40, 127));
    layer.minVelocity = static_cast<std::int8_t>(chance(70) ? 0 : number(0, 80));
    layer.maxVelocity = static_cast<std::int8_t>(chance(70) ? 127 : number(40, 127));
    layer.zone = static_cast<std::int8_t>(chance(60) ? -1 : number(0, 3));
    layer.output = static_cast<std::int8_t>(chance(60) ? -1 : number(0, outputs_));
    layer.channel = static_cast<std::int8_t>(number(0, 15));
    layer.transpose = RelativeFixedValue::relative(number(-30, 30));
    layer.velocity = RelativeFixedValue::relative(chance(60) ? 0 : number(-127, 127));
    if (chance(40)) {
        using Kind = Backend::ArpeggioManagement::ArpeggioKind;
        layer.arpeggio = {static_cast<Kind>(number(0, 3)), number(1, 960), number(1, 1500)};
    }
    if (!sequences_.empty() && chance(40)) {
        const auto which = static_cast<std::size_t>(number(0, static_cast<int>(sequences_.size()) - 1));
        layer.sequence = {sequences_[which], chance(80), chance(80), chance(80), nullptr};
    }
    return layer;
}

void RandomEdits::postLayers(QelIF& qel) {
    std::vector<Layer> layers;
    for (int count = number(0, mostLayers); count > 0; --count) {
        layers.push_back(layer());
        layers.back().index = static_cast<std::int32_t>(layers.size()) - 1;
    }
    qel.getQelMessageManager().postCall([layers](QelIF& backend) { backend.setLayers(layers); });
}

void RandomEdits::postOneLayer(QelIF& qel) {
    auto& backend = qel.getQelMessageManager();
    const SelectType which = SelectType::fixed(number(0, mostLayers));
    const auto value =
        chance(50) ? RelativeFixedValue::relative(number(-24, 24)) : RelativeFixedValue::fixed(number(0, 127));
    const OnOffToggle how(chance(50) ? "on" : "off");
    switch (number(0, 4)) {
    case 0:
        return backend.postCall([=](QelIF& each) { each.changeLayerTranspose(which, value); });
    case 1:
        return backend.postCall([=](QelIF& each) { each.changeLayerVelocity(which, value); });
    case 2:
        return backend.postCall([=](QelIF& each) { each.changeLayerMute(which, how); });
    case 3:
        return backend.postCall([=](QelIF& each) { each.changeLayerMono(which, how); });
    default:
        return backend.postCall([=](QelIF& each) { each.changeLayerSolo(which, how); });
    }
}

void RandomEdits::postZones(QelIF& qel) {
    Backend::Zones::ZoneMap zones;
    for (std::int8_t id = 0; id < 4; ++id) {
        if (chance(70)) {
            zones.set({id, static_cast<std::int8_t>(number(-60, 60)), {}, {}, false});
        }
    }
    zones.selectLowest();
    qel.getQelMessageManager().postCall([zones](QelIF& backend) { backend.setZones(zones); });
}

void RandomEdits::postOscillators(QelIF& qel) {
    using Backend::MidiEngine::MessageType;
    using Backend::MidiEngine::MidiMessage;
    Backend::Oscillators::OscList list;
    for (int count = number(0, mostOscillators); count > 0; --count) {
        Oscillator oscillator;
        oscillator.type = static_cast<Backend::Oscillators::OscillatorType>(number(0, 4));
        oscillator.speed = number(1, 4000);
        oscillator.min = number(0, 127);
        oscillator.max = number(0, 127);
        oscillator.steppedSpeed = chance(50);
        oscillator.stopValue = chance(50) ? -1 : number(0, 127);
        oscillator.detail = number(1, 40);
        oscillator.midiMessage =
            chance(70) ? MidiMessage(MessageType::controllerChange, static_cast<std::int8_t>(number(0, 119)))
                       : MidiMessage(MessageType::noteOn, static_cast<std::int8_t>(number(0, 127)));
        list.append(oscillator);
    }
    qel.getQelMessageManager().postCall([list](QelIF& backend) { backend.setOscillators(list); });
}

void RandomEdits::postPortOrTempo(QelIF& qel) {
    auto& backend = qel.getQelMessageManager();
    switch (number(0, 4)) {
    case 0:
        return backend.postEnableMidiInput(number(0, inputs_), chance(70));
    case 1:
        return backend.postEnableMidiOutput(number(0, outputs_), chance(70));
    case 2:
        return backend.postSetTempoSource(number(0, inputs_), false);
    case 3:
        return backend.postChangeMidiThru(OnOffToggle(chance(80) ? "on" : "off"), false);
    default:
        return backend.postChangeTempo(RelativeFixedValue::fixed(number(10, 500)), true);
    }
}

void RandomEdits::postSave(QelIF& qel) {
    auto& backend = qel.getQelMessageManager();
    switch (number(0, 5)) {
    case 0:
        backend.postSaveToCurrentBank(number(0, 31), {});
        return;
    case 1:
        written_.push_back(data_ / "soak.bnk");
        return backend.postSaveToBank(Platform::textOf(written_.back()), {});
    case 2:
        return backend.postChangeBankSize(number(24, 48), {});
    case 3:
        return backend.postChangeProgramName("Soak & \"" + std::to_string(number(0, 99)) + "\" <\xC3\xA4>");
    case 4:
        written_.push_back(data_ / FolderNames::layerPresets / "900 - Soak.pst");
        return qel.getLayerMessageManager().postSavePreset("900 - Soak", {});
    default:
        written_.push_back(data_ / FolderNames::controlPresets / "900 - Soak.pst");
        return qel.getControlMessageManager().postSavePreset("900 - Soak", {});
    }
}

void RandomEdits::postSequence(QelIF& qel) {
    const std::string name = "900 - Soak " + std::to_string(number(0, 3));
    std::string steps;
    for (int count = number(1, 16); count > 0; --count) {
        steps += chance(20) ? std::string("-") : std::to_string(number(-24, 24));
        steps += chance(40) ? " V" + std::to_string(number(-60, 60)) : "";
        steps += chance(40) ? " L" + std::to_string(number(1, 480)) : "";
        steps += count > 1 ? "," : "";
    }
    written_.push_back(data_ / FolderNames::sequences / (name + ".seq"));
    qel.getQelMessageManager().postAddSequencePreset(name, steps);
    if (std::find(sequences_.begin(), sequences_.end(), name) == sequences_.end()) {
        sequences_.push_back(name);
    }
}

void RandomEdits::postTake(QelIF& qel) {
    const std::filesystem::path file = data_ / "soak.mid";
    written_.push_back(file);
    qel.getQelMessageManager().postCall([file, whole = chance(30)](QelIF& backend) {
        auto& record = backend.getRetroRecord();
        static_cast<void>(whole ? record.save(file, {}) : record.save(file, 1));
    });
}

} // namespace Soak
