#include "desktop/models/OscillatorsModel.h"

#include "core/QelIF.h"
#include "desktop/models/Models.h"
#include "generators/OscillatorMessages.h"
#include "values/OnOffToggle.h"
#include "values/SelectType.h"

namespace Desktop {

using namespace Backend::Oscillators;

OscillatorsModel::OscillatorsModel(Models& models) : models_(models) {
    onCopy<OscList>(oscListMessage, [this](OscList list) {
        if (!underway_.isOutdated({list})) {
            list_ = std::move(list);
            emit changed();
        }
    });
    on(oscMovedMessage, [this](std::uintptr_t id, std::intptr_t value) {
        emit valueMoved(static_cast<int>(id), static_cast<int>(value));
    });
}

void OscillatorsModel::play(int oscillator, bool on) {
    models_.ask([oscillator, on](Backend::QelIF& qel) {
        qel.changeOscPlaying(SelectType::fixed(oscillator),
                             OnOffToggle(on ? OnOffToggle::State::on : OnOffToggle::State::off));
    });
}

void OscillatorsModel::select(int oscillator) {
    models_.ask([oscillator](Backend::QelIF& qel) { qel.dataSelectOsc(SelectType::fixed(oscillator)); });
}

void OscillatorsModel::edit(const QString& text, OscList after, int key) {
    models_.edits.edit<Snapshot>(
        text, {list_}, {std::move(after)}, [this](const Snapshot& snapshot) { apply(snapshot.list); }, key);
}

void OscillatorsModel::apply(const OscList& list) {
    list_ = list;
    underway_.posted({list});
    models_.ask([list](Backend::QelIF& qel) { qel.setOscillators(list); });
    emit changed();
}

void OscillatorsModel::change(const QString& text, const Oscillator& changedOne) {
    OscList after = list_;
    if (Oscillator* const place = after.find(OscId{changedOne.id})) {
        *place = changedOne;
        edit(text, std::move(after), models_.edits.keyFor(3000 + changedOne.id));
    }
}

void OscillatorsModel::add() {
    OscList after = list_;
    Oscillator oscillator;
    oscillator.steppedSpeed = true;
    oscillator.midiMessage = Backend::MidiEngine::MidiMessage(Backend::MidiEngine::MessageType::controllerChange, 1);
    after.append(oscillator);
    edit(tr("add an oscillator"), std::move(after));
}

void OscillatorsModel::remove(int oscillator) {
    OscList after = list_;
    after.clear();
    for (const Oscillator& each : list_) {
        if (each.id != oscillator) {
            after.append(each);
        }
    }
    edit(tr("remove an oscillator"), std::move(after));
}

void OscillatorsModel::loadPreset(const std::string& name) {
    models_.edits.perform(
        tr("load the oscillator preset %1").arg(QString::fromStdString(name)),
        [this, name] { models_.ask([name](Backend::QelIF& qel) { qel.loadOscillatorPreset(name); }); },
        [this, before = list_] { apply(before); });
}

} // namespace Desktop
