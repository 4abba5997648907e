// Edits the steps of one sequence; a layer that plays it goes on with what it has become.
#pragma once

#include <QComboBox>
#include <QPushButton>
#include <QWidget>
#include <string>

namespace Desktop {

class Models;
class NumberField;
class StepGrid;

class SequenceEditor final : public QWidget {
    Q_OBJECT

public:
    // `layer` counts from 0; only names are made of it.
    SequenceEditor(Models& models, int layer, QWidget* parent);
    void edit(const std::string& name);

private:
    void store();
    void refresh();
    void showPlace();

    Models& models_;
    std::string name_;
    StepGrid* grid_;
    NumberField *count_, *velocity_;
    QComboBox* length_;
    QPushButton* rest_;
};

} // namespace Desktop
