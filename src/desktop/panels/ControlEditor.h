// The fields of one control while it is edited.
#pragma once

#include "desktop/models/ControlsModel.h"
#include "values/QelMidiMessage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <functional>

namespace Desktop {

class ListChooser;
class Models;
class NumberField;
class ValueEventFields;

class ControlEditor final : public QWidget {
    Q_OBJECT

public:
    ControlEditor(Models& models, QWidget* parent);
    void showControl(const Cell& cell);
    [[nodiscard]] const Cell& cell() const { return cell_; }
    // The next message that arrives becomes the chosen one of those that the control sends.
    void setLearning(bool on);

signals:
    void cellChanged(); // another control is shown, or this one has moved

private:
    using Control = Backend::Controls::Control;

    void makeSettings();
    void makeEvents();
    void change(const QString& text, const std::function<void(Control&)>& work);
    // The same as an edit of its own.
    void changeAlone(const QString& text, const std::function<void(Control&)>& work);
    void moveTo(const Cell& cell);
    void learned(const Backend::MidiEngine::QelMidiMessage& message);
    [[nodiscard]] NumberField* makeField(int min, int max, const QString& name, const QString& help);
    [[nodiscard]] NumberField* makeNumber(int min, int max, const QString& name, const QString& help,
                                          std::function<void(Control&, int)> set);

    Models& models_;
    Cell cell_;
    QLineEdit* name_;
    QComboBox* type_;
    NumberField *min_, *max_, *release_, *size_, *row_, *column_;
    QCheckBox *springs_, *autoSend_;
    QPushButton* learn_;
    ListChooser* events_;
    ValueEventFields* event_;
};

} // namespace Desktop
