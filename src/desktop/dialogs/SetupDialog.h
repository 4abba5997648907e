// Set-up: ports, display, recording, window.
#pragma once

#include "gui/GuiMessages.h"

#include <QComboBox>
#include <QDialog>
#include <QVBoxLayout>

namespace Desktop {

class Models;

// What is set takes effect at once.
class SetupDialog final : public QDialog {
    Q_OBJECT

public:
    SetupDialog(Models& models, QWidget* parent);

signals:
    void paletteChosen(const QString& name);

private:
    void fillPorts();
    void fillOutputs();
    void addCheck(QVBoxLayout& page, const QString& text, const QString& help, Gui::ChangedSetting setting);

    Models& models_;
    QComboBox* output_ = nullptr;
    QWidget* ports_ = nullptr;
    QVBoxLayout* portsPage_ = nullptr;
};

} // namespace Desktop
