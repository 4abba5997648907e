#include "backend/GuiSection.h"

#include "gui/GuiMessages.h"
#include "gui/QelGuiFactory.h"
#include "input/JoystickMessages.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace Backend {

namespace {

using Gui::QelGuiIF;

// How a panel is shown, in the order of Gui::Panel.
struct Door {
    void (QelGuiIF::*show)(bool);
    void (QelGuiIF::*toggle)();
    bool ScreenState::*state;
};
constexpr std::array<Door, Gui::panelCount> doors{
    {{&QelGuiIF::showSystemPanel, &QelGuiIF::toggleSystemPanel, &ScreenState::system},
     {&QelGuiIF::showHelp, &QelGuiIF::toggleHelp, &ScreenState::help},
     {&QelGuiIF::showDisplay, &QelGuiIF::toggleDisplay, &ScreenState::display},
     {&QelGuiIF::showOsc, &QelGuiIF::toggleOsc, &ScreenState::oscillator},
     {&QelGuiIF::showJoystick, &QelGuiIF::toggleJoystick, &ScreenState::joystick},
     {&QelGuiIF::showComputerInput, &QelGuiIF::toggleComputerInput, &ScreenState::computerInput},
     {&QelGuiIF::showMidiInput, &QelGuiIF::toggleMidiInput, &ScreenState::midiInput},
     {&QelGuiIF::showOutput, &QelGuiIF::toggleOutput, &ScreenState::output},
     {&QelGuiIF::showCc, &QelGuiIF::toggleCc, &ScreenState::cc},
     {&QelGuiIF::showLayer, &QelGuiIF::toggleLayer, &ScreenState::layer},
     {&QelGuiIF::showControl, &QelGuiIF::toggleControl, &ScreenState::control},
     {&QelGuiIF::showZone, &QelGuiIF::toggleZone, &ScreenState::zone}}};

} // namespace

QelGuiIF* GuiSection::create(bool isPlugin) {
    if (!gui_) {
        gui_ = Gui::QelGuiFactory::createQelGui(from_.qel, from_.settings, from_.ports.inputs(), from_.ports.outputs(),
                                                from_.sequences.list(), isPlugin);
        window_.setGui(gui_.get());
        if (gui_) {
            from_.engine.addTap(window_);
        }
    }
    return gui_.get();
}

void GuiSection::end() {
    if (gui_) {
        from_.engine.removeTap(window_);
    }
}

void GuiSection::show(Gui::Panel panel, const OnOffToggle& how) {
    if (!gui_) {
        return;
    }
    const Door& door = doors[static_cast<std::size_t>(panel)];
    if (how.getState() == OnOffToggle::State::toggle) {
        (gui_.get()->*door.toggle)();
    } else {
        (gui_.get()->*door.show)(how.applyTo(false));
    }
}

void GuiSection::show(const ScreenState& state) {
    if (gui_) {
        for (const Door& door : doors) {
            (gui_.get()->*door.show)(state.*door.state);
        }
    }
}

void GuiSection::ask(void (QelGuiIF::*request)()) {
    if (gui_) {
        (gui_.get()->*request)();
    }
}

void GuiSection::moveWindow(const RelativeFixedValue& x, const RelativeFixedValue& y) {
    if (gui_) {
        gui_->moveWindow(x, y);
    }
}

void GuiSection::received(const MidiEngine::QelMidiMessage& message) const {
    window_.post(idOf(Gui::GuiMessage::midiReceived), static_cast<std::uintptr_t>(message.getWparam()),
                 static_cast<std::intptr_t>(message.getLparam()));
}

void GuiSection::axisMoved(const JoyAxisElementId& axis, int value) const {
    window_.post(Joystick::axisMovedMessage, static_cast<std::uintptr_t>(axis.joystick << 8 | axis.axis), value);
}

void GuiSection::buttonMoved(const JoyButtonElementId& button, bool down) const {
    window_.post(Joystick::buttonMovedMessage, static_cast<std::uintptr_t>(button.joystick << 8 | button.button),
                 down ? 1 : 0);
}

} // namespace Backend
