#include "midiengine/Layer.h"

#include "midiengine/KeyTranspose.h"
#include "values/NoteFolding.h"

#include <algorithm>

namespace Backend::Layers {

std::int8_t Layer::transform(std::int8_t note) const {
    if (key.isSet()) { // with a key the number counts steps, whether it is relative or fixed
        return MidiEngine::foldNote(MidiEngine::transposeInKey(note, key.getNumber() % 12, transpose.getValue()));
    }
    const std::int64_t base = transpose.isRelative() ? note : 0;
    return MidiEngine::foldNote(base + transpose.getValue());
}

std::int8_t Layer::transformVelocity(std::int8_t velocityIn) const {
    const std::int64_t scaled = velocity.isRelative() ? compress.scale(velocityIn) : 0;
    return static_cast<std::int8_t>(std::clamp<std::int64_t>(scaled + velocity.getValue(), 0, 127));
}

std::string Layer::summary(const std::function<std::string(int output)>& outputName) const {
    std::string text = "L:" + std::to_string(index + 1) + "  Ch:" + std::to_string(channel + 1);
    if (zone >= 0) {
        text += "  Z:" + std::to_string(zone + 1);
    }
    if (hasVelocityRange()) {
        text += "  VR:" + std::to_string(minVelocity) + "-" + std::to_string(maxVelocity);
    }
    if (output >= 0) {
        text += "  O:" + outputName(output);
    }
    if (!transpose.isNoChange()) {
        text += "  T:" + transpose.toXmlString();
    }
    if (key.isSet()) {
        text += "  K:" + key.getPitchName();
    }
    if (!velocity.isNoChange()) {
        text += "  V:" + velocity.toXmlString();
    }
    if (!compress.isOne()) {
        text += "  Comp:" + compress.toDisplayString();
    }
    if (!toggle.isOff()) {
        text += toggle.isType1() ? "  TOGGLE1" : "  TOGGLE2";
    }
    if (mono) {
        text += "  MONO";
    }
    if (!useNoteStack) {
        text += "  STACK OFF";
    }
    if (arpeggio) {
        text += "  " + arpeggio->summary();
    }
    return text;
}

} // namespace Backend::Layers
