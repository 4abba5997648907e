// The user interface that belongs to the backend, where there is one.
#pragma once

#include "backend/GuiWindow.h"
#include "backend/PortSection.h"
#include "backend/SequencePresetManager.h"
#include "core/RegistrySettings.h"
#include "gui/Panel.h"
#include "gui/QelGuiIF.h"
#include "midiengine/MidiEngine.h"
#include "values/JoyAxisElementId.h"
#include "values/JoyButtonElementId.h"
#include "values/OnOffToggle.h"
#include "values/QelMidiMessage.h"
#include "values/RelativeFixedValue.h"
#include "values/ScreenState.h"

#include <memory>

namespace Backend {

class QelIF;

// Made once. Without a user interface nothing here does anything. [backend]
class GuiSection final {
public:
    // What a user interface is made of; outlives the section.
    struct Sources {
        QelIF& qel;
        MidiEngine::MidiEngine& engine;
        RegistrySettings& settings;
        const PortSection& ports;
        const SequenceManagement::SequencePresetManager& sequences;
    };
    explicit GuiSection(const Sources& sources) : from_(sources) {}

    // Null when there is to be none.
    Gui::QelGuiIF* create(bool isPlugin);
    // It sees no more of what the engine sends.
    void end();
    [[nodiscard]] Gui::QelGuiIF* gui() const { return gui_.get(); } // [any]
    [[nodiscard]] GuiWindow& window() { return window_; }           // [any]
    [[nodiscard]] const GuiWindow& window() const { return window_; }

    void show(Gui::Panel panel, const OnOffToggle& how);
    void show(const ScreenState& state);
    void ask(void (Gui::QelGuiIF::*request)());
    void moveWindow(const RelativeFixedValue& x, const RelativeFixedValue& y);

    // What arrives, for the panels that show it.
    void received(const MidiEngine::QelMidiMessage& message) const;
    void axisMoved(const JoyAxisElementId& axis, int value) const;
    void buttonMoved(const JoyButtonElementId& button, bool down) const;

private:
    Sources from_;
    GuiWindow window_;
    std::unique_ptr<Gui::QelGuiIF> gui_;
};

} // namespace Backend
