#include "desktop/models/ControlsModel.h"

#include "core/QelIF.h"
#include "desktop/models/Models.h"
#include "input/ControlMessageManager.h"
#include "input/ControlMessages.h"

#include <QStringList>

namespace Desktop {

using namespace Backend::Controls;

ControlsModel::ControlsModel(Models& models) : models_(models) {
    onCopy<ControlMap>(controlsMessage, [this](ControlMap map) {
        if (!underway_.isOutdated({map})) {
            map_ = std::move(map);
            emit changed();
        }
    });
    onCopy<std::vector<Control>>(controlsPutMessage, [this](const std::vector<Control>& list) {
        for (const Control& control : list) {
            map_.store(control.cell, control);
        }
        emit changed();
    });
    onCopy<std::set<Cell>>(controlsSelectedMessage, [this](std::set<Cell> cells) {
        selection_ = std::move(cells);
        emit changed();
    });
    on(controlMovedMessage, [this](std::uintptr_t packed, std::intptr_t value) {
        const Cell cell = Cell::fromPacked(static_cast<std::uint32_t>(packed));
        if (Control* const control = map_.find(cell)) {
            control->value = static_cast<std::int32_t>(value);
            emit valueMoved(cell, control->value);
        }
    });
    on(focusControlMessage, [this](std::uintptr_t kind, std::intptr_t packed) {
        const bool fixed = static_cast<SelectControlType::Kind>(kind) == SelectControlType::Kind::fixed;
        emit focusAsked(fixed ? Cell::fromPacked(static_cast<std::uint32_t>(packed)) : Cell{});
    });
}

QString ControlsModel::textOf(const Control& control) const {
    QStringList parts;
    for (const Backend::ValueEvent& event : control.events) {
        QString text = QString::fromStdString(event.message.getEventNameWithCcAndNoteDetail());
        text += tr(" → %1").arg(event.output < 0 ? tr("default output") : models_.ports.outputName(event.output));
        if (event.channel >= 0) {
            text += tr(", channel %1").arg(event.channel + 1);
        }
        parts << text;
    }
    return parts.isEmpty() ? tr("sends nothing") : parts.join("; ");
}

void ControlsModel::move(const Cell& cell, int value) {
    if (Control* const control = map_.find(cell)) {
        control->value = control->clamped(value);
        models_.qel().getControlMessageManager().postSetValue(cell, control->value);
        emit valueMoved(cell, control->value);
    }
}

void ControlsModel::release(const Cell& cell) {
    models_.qel().getControlMessageManager().postRelease(cell);
}

void ControlsModel::select(std::set<Cell> cells) {
    selection_ = std::move(cells);
    models_.qel().getControlMessageManager().postSelect({selection_.begin(), selection_.end()});
    emit changed();
}

void ControlsModel::edit(const QString& text, ControlMap after, int key) {
    models_.edits.edit<Snapshot>(
        text, {map_}, {std::move(after)}, [this](const Snapshot& snapshot) { apply(snapshot.map); }, key);
}

void ControlsModel::apply(const ControlMap& map) {
    map_ = map;
    underway_.posted({map});
    models_.qel().getControlMessageManager().postSet(map_);
    emit changed();
}

void ControlsModel::put(const QString& text, const Control& control, bool isGesture) {
    constexpr int kind = 7000;
    ControlMap after = map_;
    after.store(control.cell, control);
    edit(text, std::move(after), isGesture ? models_.edits.keyFor(kind) : 0);
}

void ControlsModel::moveTo(const Cell& from, const Cell& to) {
    const Control* const moved = map_.find(from);
    if (moved == nullptr || from == to) {
        return;
    }
    ControlMap after = map_;
    Control here = *moved;
    here.cell = to;
    if (const Control* const other = map_.find(to)) {
        Control there = *other;
        there.cell = from;
        after.store(from, there);
    } else {
        after.remove(from);
    }
    after.store(to, here);
    edit(tr("move a control"), std::move(after));
}

void ControlsModel::remove(const Cell& cell) {
    ControlMap after = map_;
    after.remove(cell);
    edit(tr("remove a control"), std::move(after));
}

void ControlsModel::loadPreset(const std::string& name) {
    models_.edits.perform(
        tr("load the control preset %1").arg(QString::fromStdString(name)),
        [this, name] { models_.ask([name](Backend::QelIF& qel) { qel.loadControlPreset(name); }); },
        [this, before = map_] { apply(before); });
}

} // namespace Desktop
