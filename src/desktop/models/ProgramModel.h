// The current program and its bank.
#pragma once

#include "desktop/models/Model.h"
#include "gui/GuiCopies.h"

namespace Desktop {

class Models;

class ProgramModel final : public Model {
    Q_OBJECT

public:
    explicit ProgramModel(Models& models);

    [[nodiscard]] const Gui::ProgramInfo& program() const { return program_; }
    [[nodiscard]] const Gui::BankInfo& bank() const { return bank_; }
    // The name, or what stands for one that has none.
    [[nodiscard]] QString title() const;

    void step(bool up);
    void choose(int slot);
    void rename(const QString& name); // can be undone

signals:
    void exchanged();                    // another program is there
    void saved();                        // what was asked to be saved last
    void imported();                     // a file of version 2
    void faultSaid(const QString& text); // a file could not be read or written

private:
    Models& models_;
    Gui::ProgramInfo program_;
    Gui::BankInfo bank_;
};

} // namespace Desktop
