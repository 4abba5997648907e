#include "desktop/models/ProgramModel.h"

#include "core/QelMessageManager.h"
#include "desktop/models/Models.h"
#include "gui/GuiMessages.h"
#include "gui/QelGui.h"
#include "values/SelectType.h"

namespace Desktop {

ProgramModel::ProgramModel(Models& models) : models_(models) {
    on(idOf(Gui::GuiMessage::saved), [this](std::uintptr_t, std::intptr_t) { emit saved(); });
    for (const Gui::GuiMessage message : {Gui::GuiMessage::bankImported, Gui::GuiMessage::programImported}) {
        on(idOf(message), [this](std::uintptr_t, std::intptr_t) {
            emit exchanged();
            emit imported();
        });
    }
    on(idOf(Gui::GuiMessage::presetImported), [this](std::uintptr_t, std::intptr_t) { emit imported(); });
    onCopy<Gui::ProgramInfo>(idOf(Gui::GuiMessage::program), [this](Gui::ProgramInfo info) {
        const bool other = info.slot != program_.slot;
        program_ = std::move(info);
        models_.gui().getCurrentProgram() = program_;
        if (other) {
            emit exchanged();
        }
        emit changed();
    });
    onCopy<Gui::BankInfo>(idOf(Gui::GuiMessage::bank), [this](Gui::BankInfo info) {
        const bool other = info.path != bank_.path;
        bank_ = std::move(info);
        models_.gui().setCurrentBank(bank_);
        if (other) {
            emit exchanged();
        }
        emit changed();
    });
}

QString ProgramModel::title() const {
    return program_.name.empty() ? tr("Untitled") : QString::fromStdString(program_.name);
}

void ProgramModel::step(bool up) {
    models_.backend().postChangeProgram(SelectType(up ? SelectType::Kind::up : SelectType::Kind::down));
}

void ProgramModel::choose(int slot) {
    models_.backend().postChangeProgram(SelectType::fixed(slot));
}

void ProgramModel::rename(const QString& name) {
    models_.edits.edit<QString>(tr("rename the program"), QString::fromStdString(program_.name), name,
                                [this](const QString& text) {
                                    program_.name = text.toStdString();
                                    models_.backend().postChangeProgramName(program_.name);
                                    emit changed();
                                });
}

} // namespace Desktop
