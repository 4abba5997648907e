#include "desktop/models/Models.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "gui/QelGui.h"

#include <initializer_list>
#include <utility>

namespace Desktop {

Models::Models(Gui::QelGui& gui)
    : gui_(gui), program(*this), settings(*this), ports(*this), keys(*this), controls(*this), layers(*this),
      sequences(*this), zones(*this), joysticks(*this), oscillators(*this), midiInput(*this), events(*this),
      keptEdits(*this) {
    for (Model* model :
         std::initializer_list<Model*>{&program, &settings, &ports, &keys, &controls, &layers, &sequences, &zones,
                                       &joysticks, &oscillators, &midiInput, &playing, &events}) {
        gui.getGuiMessageManagerMaster().addMessageManager(*model);
    }
    // What goes out lights lamps and is listed.
    QObject::connect(&playing, &PlayingModel::received, &events, &EventsModel::addReceived);
    // Edits of a program that is gone cannot be taken back.
    QObject::connect(&program, &ProgramModel::exchanged, &edits, &QUndoStack::clear);
}

Backend::QelIF& Models::qel() {
    return gui_.getQelIF();
}

Backend::QelMessageManager& Models::backend() {
    return gui_.getQelMessageManager();
}

void Models::ask(std::function<void(Backend::QelIF&)> call) {
    backend().postCall(std::move(call));
}

} // namespace Desktop
