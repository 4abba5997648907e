#include "backend/OscillatorSection.h"

#include "backend/Selection.h"
#include "core/MessageParameters.h"
#include "core/QelIF.h"
#include "generators/OscillatorMessages.h"
#include "generators/OscillatorSpeed.h"
#include "generators/OscillatorXml.h"
#include "midiengine/MidiEngine.h"
#include "midiengine/MidiEngineMessageManager.h"
#include "platform/WindowMessages.h"

#include <utility>

namespace Backend {

using Oscillators::Oscillator;
using Oscillators::OscList;

namespace {

const OscList& builtInOscillators() {
    static const OscList list;
    return list;
}

Component::SectionText<OscList, std::vector<OscId>> oscillatorsText() {
    return {Oscillators::readOscillators,
            [](std::ostream& out, int depth, const OscList& list) { Oscillators::writeOscillators(out, depth, list); },
            [](std::ostream& out, const OscList& list, const std::vector<OscId>& ids) {
                Oscillators::writeOscillators(out, 0, list, ids);
            }};
}

std::vector<OscId> idsOf(const std::vector<int>& places) {
    std::vector<OscId> ids;
    for (const int place : places) {
        ids.push_back({place});
    }
    return ids;
}

int sizeOf(const OscList& list) {
    return static_cast<int>(list.size());
}

} // namespace

OscillatorSection::OscillatorSection(const QelIF& qel, MidiEngine::MidiEngine& engine,
                                     std::filesystem::path presetFolder,
                                     const std::function<void(const Platform::Fault&)>& reportFault,
                                     std::function<bool()> wake)
    : qel_(qel), engine_(engine), presets_(std::move(presetFolder), Oscillators::oscillatorsFormat(), oscillatorsText(),
                                           builtInOscillators(), reportFault),
      notices_([this, wake = std::move(wake)] { return qel_.getGuiWindowHandle() != nullptr && wake(); }) {
    engine_.setOscillatorWatcher(&notices_);
}

OscillatorSection::~OscillatorSection() {
    engine_.setOscillatorWatcher(nullptr);
}

// Whole sections. ------------------------------------------------------------------------------------------------

void OscillatorSection::read(const Platform::XmlElement& section) {
    set(presets_.readSection(section, list_));
}

void OscillatorSection::write(std::ostream& out, int depth, bool allowReference) const {
    presets_.writeSection(out, depth, list_, isChanged_, allowReference);
}

void OscillatorSection::set(OscList list) {
    list_ = std::move(list);
    isChanged_ = false;
    for (Oscillator& each : list_) {
        each.playing = false;
        each.selected = each.id == 0;
    }
    install();
}

void OscillatorSection::edit(const OscList& list) {
    OscList edited;
    edited.merge(list); // with the ids of their places
    edited.presetName = list.presetName;
    const bool isMotion = changeMotion(edited);
    list_ = std::move(edited);
    isChanged_ = true;
    isMotion ? tellWindow() : install();
}

bool OscillatorSection::changeMotion(const OscList& list) {
    OscList still = list;
    for (Oscillator& each : still) {
        const Oscillator* ours = list_.find({each.id});
        each.speed = ours != nullptr ? ours->speed : each.speed;
    }
    if (!still.hasSameActions(list_)) {
        return false;
    }
    for (const Oscillator& each : list) {
        const Oscillator& ours = *list_.find({each.id});
        if (each.speed != ours.speed) {
            engine_.getMessageManager().postSetOscSpeed({each.id}, each.speed);
        }
        if (each.playing != ours.playing) {
            engine_.getMessageManager().postSetOscPlaying({each.id}, each.playing);
        }
    }
    return true;
}

void OscillatorSection::put(const std::vector<Oscillator>& oscillators) {
    for (const Oscillator& oscillator : oscillators) {
        if (Oscillator* ours = list_.find({oscillator.id})) {
            *ours = oscillator;
        } else {
            list_.append(oscillator);
        }
    }
    isChanged_ = true;
    install();
}

void OscillatorSection::install() {
    engine_.getMessageManager().postSetOscList(list_);
    tellWindow();
}

void OscillatorSection::tellWindow() const {
    if (const Platform::WindowHandle window = qel_.getGuiWindowHandle()) {
        postCopy(list_, [window](std::uintptr_t copy) {
            return Platform::postWindowMessage(window, {Oscillators::oscListMessage, copy, 0});
        });
    }
}

// Selection. -----------------------------------------------------------------------------------------------------

int OscillatorSection::firstSelected() const {
    const std::vector<OscId> ids = selected();
    return ids.empty() ? -1 : ids.front().index;
}

std::vector<OscId> OscillatorSection::selected() const {
    std::vector<OscId> ids;
    for (const Oscillator& each : list_) {
        if (each.selected) {
            ids.push_back({each.id});
        }
    }
    return ids;
}

void OscillatorSection::select(const SelectType& which) {
    using Kind = SelectType::Kind;
    if (which.getKind() == Kind::selected) {
        return;
    }
    const int place = selectedPlace(which, firstSelected(), sizeOf(list_));
    if (which.getKind() == Kind::fixed && place != which.getIndex()) {
        return; // there is no such oscillator
    }
    for (Oscillator& each : list_) {
        each.selected = which.getKind() == Kind::all || each.id == place;
    }
    tellWindow();
}

void OscillatorSection::select(const std::vector<OscId>& ids) {
    for (Oscillator& each : list_) {
        each.selected = false;
    }
    for (const OscId id : ids) {
        if (Oscillator* each = list_.find(id)) {
            each->selected = true;
        }
    }
}

// Changes. -------------------------------------------------------------------------------------------------------

void OscillatorSection::changePlaying(const SelectType& which, const OnOffToggle& how) {
    const std::vector<OscId> ids = which.getKind() == SelectType::Kind::selected
                                       ? selected()
                                       : idsOf(addressedPlaces(which, firstSelected(), sizeOf(list_)));
    for (const OscId id : ids) {
        Oscillator& each = *list_.find(id);
        if (const bool on = how.applyTo(each.playing); on != each.playing) {
            each.playing = on;
            engine_.getMessageManager().postSetOscPlaying(id, on);
        }
    }
    tellWindow();
}

void OscillatorSection::changeSpeed(const SelectType& which, const RelativeFixedValue& value) {
    using Kind = SelectType::Kind;
    const Oscillator* named = which.getKind() == Kind::fixed ? list_.find({which.getIndex()}) : nullptr;
    std::vector<OscId> ids;
    if (which.getKind() == Kind::selected || (named != nullptr && named->selected)) {
        ids = selected();
    } else if (which.getKind() == Kind::fixed) {
        ids = named == nullptr ? ids : std::vector<OscId>{{named->id}};
    } else {
        ids = idsOf(addressedPlaces(SelectType(Kind::all), -1, sizeOf(list_)));
    }
    for (const OscId id : ids) {
        Oscillator& each = *list_.find(id);
        if (const std::int32_t speed = Oscillators::changedSpeed(each, value); speed != each.speed) {
            each.speed = speed;
            isChanged_ = true;
            engine_.getMessageManager().postSetOscSpeed(id, speed);
        }
    }
    tellWindow();
}

void OscillatorSection::showValues() {
    notices_.drain([window = qel_.getGuiWindowHandle()](OscId id, std::int32_t value) {
        if (window != nullptr) {
            Platform::postWindowMessage(window,
                                        {Oscillators::oscMovedMessage, static_cast<std::uintptr_t>(id.index), value});
        }
    });
}

// Presets. -------------------------------------------------------------------------------------------------------

void OscillatorSection::loadPreset(const std::string& name) {
    if (auto loaded = presets_.load(name, list_)) {
        set(std::move(*loaded));
    }
}

void OscillatorSection::savePreset(const std::string& name, const std::vector<OscId>& ids) {
    if (presets_.save(name, list_, ids)) {
        list_.presetName = name;
        isChanged_ = false;
        tellWindow();
    }
}

} // namespace Backend
