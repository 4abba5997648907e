#include "desktop/models/JoystickModel.h"

#include "core/QelIF.h"
#include "desktop/models/Models.h"
#include "input/JoystickMessageManager.h"
#include "input/JoystickMessages.h"

namespace Desktop {

using namespace Backend::Joystick;

namespace {
constexpr int middle = 32767;

bool isThere(int joystick, int element, int count) {
    return joystick >= 0 && joystick < JoystickModel::joysticks && element >= 0 && element < count;
}
} // namespace

JoystickModel::JoystickModel(Models& models) : models_(models) {
    for (auto& each : positions_) {
        each.fill(middle);
    }
    onCopy<JoystickMap>(joysticksMessage, [this](JoystickMap map) {
        if (!underway_.isOutdated({map})) {
            map_ = std::move(map);
            emit changed();
        }
    });
    on(axisMovedMessage, [this](std::uintptr_t which, std::intptr_t value) {
        const int joystick = static_cast<int>(which >> 8);
        const int axis = static_cast<int>(which & 0xFF);
        if (isThere(joystick, axis, axes)) {
            positions_[static_cast<std::size_t>(joystick)][static_cast<std::size_t>(axis)] = static_cast<int>(value);
            emit moved();
        }
    });
    on(buttonMovedMessage, [this](std::uintptr_t which, std::intptr_t down) {
        const int joystick = static_cast<int>(which >> 8);
        const int button = static_cast<int>(which & 0xFF);
        if (isThere(joystick, button, buttons)) {
            std::uint32_t& bits = down_[static_cast<std::size_t>(joystick)];
            bits = down != 0 ? bits | 1U << button : bits & ~(1U << button);
            emit moved();
        }
    });
}

int JoystickModel::position(int joystick, int axis) const {
    return isThere(joystick, axis, axes)
               ? positions_[static_cast<std::size_t>(joystick)][static_cast<std::size_t>(axis)]
               : middle;
}

bool JoystickModel::isDown(int joystick, int button) const {
    return isThere(joystick, button, buttons) && (down_[static_cast<std::size_t>(joystick)] >> button & 1U) != 0;
}

void JoystickModel::edit(const QString& text, JoystickMap after) {
    constexpr int kind = 6000;
    models_.edits.edit<Snapshot>(
        text, {map_}, {std::move(after)}, [this](const Snapshot& snapshot) { apply(snapshot.map); },
        models_.edits.keyFor(kind));
}

void JoystickModel::apply(const JoystickMap& map) {
    map_ = map;
    underway_.posted({map});
    models_.qel().getJoystickMessageManager().postSet(map_);
    emit changed();
}

void JoystickModel::putAxis(const AxisConfiguration& axis) {
    JoystickMap after = map_;
    after.axes.store(axis.axis, axis);
    edit(tr("edit a joystick's axis"), std::move(after));
}

void JoystickModel::putButton(const JoystickButtonConfiguration& button) {
    JoystickMap after = map_;
    after.buttons.store(button.button, button);
    edit(tr("edit a joystick's button"), std::move(after));
}

void JoystickModel::loadPreset(const std::string& name) {
    models_.edits.perform(
        tr("load the joystick preset %1").arg(QString::fromStdString(name)),
        [this, name] { models_.ask([name](Backend::QelIF& qel) { qel.loadJoystickInputPreset(name); }); },
        [this, before = map_] { apply(before); });
}

} // namespace Desktop
