// All that the window shows, and the one way in which it asks for more.
#pragma once

#include "desktop/models/ControlsModel.h"
#include "desktop/models/Edits.h"
#include "desktop/models/EventsModel.h"
#include "desktop/models/JoystickModel.h"
#include "desktop/models/KeptEdits.h"
#include "desktop/models/KeysModel.h"
#include "desktop/models/LayersModel.h"
#include "desktop/models/MidiInputModel.h"
#include "desktop/models/OscillatorsModel.h"
#include "desktop/models/PlayingModel.h"
#include "desktop/models/PortsModel.h"
#include "desktop/models/ProgramModel.h"
#include "desktop/models/SequencesModel.h"
#include "desktop/models/SettingsModel.h"
#include "desktop/models/ZonesModel.h"

#include <functional>

namespace Backend {
class QelIF;
class QelMessageManager;
} // namespace Backend
namespace Gui {
class QelGui;
}

namespace Desktop {

// [gui]
class Models final {
public:
    // `gui` outlives the object.
    explicit Models(Gui::QelGui& gui);

    [[nodiscard]] Gui::QelGui& gui() { return gui_; }
    [[nodiscard]] Backend::QelIF& qel();
    [[nodiscard]] Backend::QelMessageManager& backend();
    // Does something on the backend's thread.
    void ask(std::function<void(Backend::QelIF&)> call);

private:
    Gui::QelGui& gui_;

public:
    Edits edits;
    ProgramModel program;
    SettingsModel settings;
    PortsModel ports;
    KeysModel keys;
    ControlsModel controls;
    LayersModel layers;
    SequencesModel sequences;
    ZonesModel zones;
    JoystickModel joysticks;
    OscillatorsModel oscillators;
    MidiInputModel midiInput;
    PlayingModel playing;
    EventsModel events;
    KeptEdits keptEdits;
};

} // namespace Desktop
