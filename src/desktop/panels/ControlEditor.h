// The fields of one control while it is edited.
#pragma once

#include "desktop/models/ControlsModel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

namespace Desktop {

class Models;
class NumberField;

class ControlEditor final : public QWidget {
    Q_OBJECT

public:
    ControlEditor(Models& models, QWidget* parent);
    void showControl(const Cell& cell);
    [[nodiscard]] const Cell& cell() const { return cell_; }
    void setLearning(bool on);

signals:
    void learnAsked();

private:
    void store();
    void storeEvent();

    Models& models_;
    Cell cell_;
    bool showing_ = false;
    QLineEdit* name_;
    QComboBox *type_, *event_;
    NumberField *min_, *max_, *release_, *size_, *number_, *channel_, *output_, *zone_;
    QCheckBox *springs_, *autoSend_;
    QPushButton *learn_, *remove_;
};

} // namespace Desktop
