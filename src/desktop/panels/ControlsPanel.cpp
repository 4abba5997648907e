#include "desktop/panels/ControlsPanel.h"

#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/ControlEditor.h"
#include "desktop/panels/ValueEventFields.h"
#include "desktop/widgets/ElidedLabel.h"
#include "desktop/widgets/Fader.h"
#include "desktop/widgets/Knob.h"
#include "desktop/widgets/NumberField.h"
#include "input/ControlMessageManager.h"

#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <algorithm>

namespace Desktop {

using Backend::Controls::Control;
using Backend::Controls::ControlType;

namespace {
constexpr int mostCells = 64; // of a size, and to the right and downward

// Controls without a place, or far away, are there and not drawn.
bool isDrawn(const Cell& cell) {
    return cell.x >= 0 && cell.y >= 0 && cell.x < mostCells && cell.y < mostCells;
}
} // namespace

ControlsPanel::ControlsPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::control, tr("Controls"),
                 tr("Drag, turn the wheel, or double-click; with Shift it moves finely"), models, parent) {
    edit_ = makeButton("✎", tr("Edit the controls"), tr("Add, move and set up controls"), this);
    edit_->setCheckable(true);
    addHeadWidget(edit_);
    auto* const area = new QScrollArea(this);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    holder_ = new QWidget(area);
    auto* const box = new QVBoxLayout(holder_);
    box->setContentsMargins(0, 0, 0, 0);
    area->setWidget(holder_);
    body().addWidget(area, 1);
    line_ = new ElidedLabel(this);
    line_->setObjectName("Dim");
    body().addWidget(line_);
    editor_ = new ControlEditor(models, this);
    editor_->hide();
    body().addWidget(editor_);
    connect(edit_, &QToolButton::toggled, this, [this](bool on) {
        editor_->setVisible(on);
        shape_.clear();
        refresh();
        if (on && this->models().controls.map().find(editor_->cell()) == nullptr && !captions_.empty()) {
            edit(captions_.begin()->first);
        }
    });
    connect(editor_, &ControlEditor::cellChanged, this, &ControlsPanel::showEdited);
    connect(&models.controls, &Model::changed, this, &ControlsPanel::refresh);
    connect(&models.controls, &ControlsModel::valueMoved, this, &ControlsPanel::moved);
    connect(&models.controls, &ControlsModel::focusAsked, this, &ControlsPanel::focusControl);
    setPresets(
        {"Control Presets", [this] { return this->models().controls.map().presetName; },
         [this](const std::string& name) { this->models().controls.loadPreset(name); },
         [this](const std::string& name) { this->models().qel().getControlMessageManager().postSavePreset(name, {}); },
         [this](const std::string& name) { this->models().qel().getControlMessageManager().postDeletePreset(name); },
         [this] {
             std::vector<PresetElement> elements;
             for (const Cell& cell : idsOf(this->models().controls.map())) {
                 const Control& control = *this->models().controls.map().find(cell);
                 elements.push_back(
                     {QStringLiteral("%1,%2   %3   %4")
                          .arg(cell.x)
                          .arg(cell.y)
                          .arg(QString::fromStdString(control.name), this->models().controls.textOf(control)),
                      this->models().controls.selection().contains(cell)});
             }
             return elements;
         },
         [this](const std::string& name, const std::vector<int>& places) {
             this->models().qel().getControlMessageManager().postSavePreset(
                 name, idsAt(this->models().controls.map(), places));
         }});
    refresh();
}

void ControlsPanel::showEdited() {
    for (const auto& [cell, button] : captions_) {
        button->setChecked(cell == editor_->cell());
    }
}

void ControlsPanel::edit(const Cell& cell) {
    models().controls.select({cell});
    editor_->showControl(cell);
    showEdited(); // also when it was that one
}

ValueInstrument* ControlsPanel::instrumentAt(const Cell& cell) const {
    const auto found = instruments_.find(cell);
    return found == instruments_.end() ? nullptr : found->second;
}

void ControlsPanel::focusControl(const Cell& cell) {
    const auto& selection = models().controls.selection();
    const Cell& wanted = cell.x >= 0 || selection.empty() ? cell : *selection.begin();
    if (ValueInstrument* const instrument = instrumentAt(wanted)) {
        instrument->setFocus(Qt::OtherFocusReason);
        instrument->beginTyping();
    }
}

void ControlsPanel::moved(const Cell& cell, int value) {
    if (ValueInstrument* const instrument = instrumentAt(cell)) {
        instrument->setValue(value);
    }
    if (const auto label = values_.find(cell); label != values_.end() && label->second != nullptr) {
        label->second->setText(QString::number(value));
    }
}

// Built anew only when something other than a value has changed.
void ControlsPanel::refresh() {
    QString shape = paletteName() + (edit_->isChecked() ? "edit" : "play"); // colours are kept by widgets
    int rows = 0;
    int columns = 0;
    for (const auto& [cell, control] : models().controls.map()) {
        shape += QStringLiteral("|%1,%2 %3 %4 %5 %6 %7 %8")
                     .arg(cell.x)
                     .arg(cell.y)
                     .arg(static_cast<int>(control.type.getKind()))
                     .arg(control.size)
                     .arg(control.min)
                     .arg(control.max)
                     .arg(control.release)
                     .arg(QString::fromStdString(control.name) + models().controls.textOf(control));
        if (isDrawn(cell)) {
            rows = std::max(rows, cell.x + 1);
            columns = std::max(columns, cell.y + 1);
        }
    }
    showPresetName();
    if (shape != shape_) {
        shape_ = shape;
        instruments_.clear();
        values_.clear();
        captions_.clear();
        delete surface_;
        surface_ = new QWidget(holder_);
        auto* const table = new QGridLayout(surface_);
        table->setContentsMargins(0, 0, 0, 0);
        table->setSpacing(grid(2));
        for (const auto& [cell, control] : models().controls.map()) {
            if (isDrawn(cell)) {
                addControl(control);
            }
        }
        if (edit_->isChecked()) {
            const int last = columns;
            for (int row = 0; row <= rows; ++row) {
                for (int column = 0; column <= last; ++column) {
                    if (table->itemAtPosition(row, column) == nullptr) {
                        auto* const add = makeButton("+", tr("Add a control at %1,%2").arg(row + 1).arg(column + 1),
                                                     tr("Adds a control here"), surface_);
                        connect(add, &QToolButton::clicked, this, [this, row, column] {
                            Control control{Cell{row, column}};
                            control.type = ControlType(ControlType::Kind::knob);
                            control.events.push_back(ValueEventFields::fresh());
                            models().controls.put(tr("add a control"), control);
                            edit(control.cell);
                        });
                        table->addWidget(add, row, column, Qt::AlignCenter);
                    }
                }
            }
        }
        table->setColumnStretch(columns + 1, 1);
        table->setRowStretch(rows + 1, 1);
        static_cast<QVBoxLayout*>(holder_->layout())->addWidget(surface_);
        surface_->show();
        editor_->showControl(editor_->cell());
        showEdited();
    }
    for (const auto& [cell, control] : models().controls.map()) {
        moved(cell, control.value);
    }
    for (const auto& [cell, instrument] : instruments_) {
        instrument->setProperty("selected", models().controls.selection().contains(cell));
        instrument->update();
    }
    const auto& selection = models().controls.selection();
    if (!selection.empty()) {
        if (const Control* const control = models().controls.map().find(*selection.begin())) {
            line_->setText(QString::fromStdString(control->name) + "  " + models().controls.textOf(*control));
        }
    }
}

void ControlsPanel::addControl(const Control& control) {
    auto* const box = new QWidget(surface_);
    auto* const column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(grid(1) / 2);
    const Cell cell = control.cell;
    const QString name = QString::fromStdString(control.name);
    const ControlType::Kind kind = control.type.getKind();
    QWidget* const caption = makeCaption(control, box);
    if (caption != nullptr && kind != ControlType::Kind::edit) {
        column->addWidget(caption);
    }
    ValueInstrument* instrument = nullptr;
    switch (kind) {
    case ControlType::Kind::vfader: {
        auto* const fader = new Fader(Qt::Vertical, box);
        if (control.release != Control::NO_RELEASE) {
            fader->setColour(Desktop::palette().teal);
        }
        instrument = fader;
        break;
    }
    case ControlType::Kind::hfader:
        instrument = new Fader(Qt::Horizontal, box);
        break;
    case ControlType::Kind::knob:
        instrument = new Knob(box);
        break;
    case ControlType::Kind::edit:
        instrument = new NumberField(box);
        break;
    default:
        break;
    }
    if (instrument != nullptr) {
        instrument->setRange(control.min, control.max);
        instrument->setValue(control.value);
        if (control.release != Control::NO_RELEASE) {
            instrument->setResting(control.release);
        }
        const QString text = models().controls.textOf(control);
        instrument->describe(name.isEmpty() ? tr("Control %1,%2").arg(cell.x + 1).arg(cell.y + 1) : name,
                             name + "   " + text);
        connect(instrument, &ValueInstrument::moved, this,
                [this, cell](int value) { models().controls.move(cell, value); });
        connect(instrument, &ValueInstrument::letGo, this, [this, cell] { models().controls.release(cell); });
        connect(instrument, &ValueInstrument::pressed, this, [this, cell] { edit(cell); });
        connect(instrument, &ValueInstrument::menuAsked, this,
                [this, cell](QPoint where) { controlMenu(cell, where); });
        column->addWidget(instrument, kind == ControlType::Kind::vfader ? 1 : 0, Qt::AlignHCenter);
        instruments_[cell] = instrument;
        if (kind != ControlType::Kind::edit) {
            auto* const value = new QLabel(box);
            value->setAlignment(Qt::AlignCenter);
            value->setFont(figureFont(0.9));
            column->addWidget(value);
            values_[cell] = value;
        }
    }
    if (caption != nullptr && kind == ControlType::Kind::edit) {
        column->addWidget(caption);
    }
    auto* const table = static_cast<QGridLayout*>(surface_->layout());
    const bool upright = kind == ControlType::Kind::vfader;
    const int size = std::clamp(control.size, 1, mostCells);
    table->addWidget(box, cell.x, cell.y, upright ? size : 1, upright ? 1 : size,
                     upright ? Qt::Alignment() : Qt::AlignCenter);
}

// The name; while controls are edited a button that chooses this one, so that those without a handle can be chosen,
// too.
QWidget* ControlsPanel::makeCaption(const Control& control, QWidget* box) {
    const QString name = QString::fromStdString(control.name);
    const QString place = tr("%1,%2").arg(control.cell.x + 1).arg(control.cell.y + 1);
    if (edit_->isChecked()) {
        QToolButton* const button =
            makeButton(name.isEmpty() ? place : name, tr("Edit the control %1").arg(name.isEmpty() ? place : name),
                       tr("Shows the settings of this control below"), box);
        button->setCheckable(true);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        connect(button, &QToolButton::clicked, this, [this, cell = control.cell] { edit(cell); });
        captions_[control.cell] = button;
        return button;
    }
    if (name.isEmpty()) {
        return nullptr;
    }
    auto* const label = new QLabel(name, box);
    label->setObjectName("Caption");
    label->setAlignment(Qt::AlignCenter);
    return label;
}

void ControlsPanel::controlMenu(const Cell& cell, const QPoint& where) {
    QMenu menu(this);
    menu.addAction(tr("Type a value"), this, [this, cell] { focusControl(cell); });
    menu.addAction(tr("Edit"), this, [this, cell] {
        edit_->setChecked(true);
        editor_->showControl(cell);
    });
    menu.addAction(tr("Learn"), this, [this, cell] {
        edit_->setChecked(true);
        editor_->showControl(cell);
        editor_->setLearning(true);
    });
    QMenu* const move = menu.addMenu(tr("Move"));
    const auto to = [&](const QString& text, int rows, int columns) {
        const Cell target{cell.x + rows, cell.y + columns};
        move->addAction(text, this, [this, cell, target] { models().controls.moveTo(cell, target); })
            ->setEnabled(target.x >= 0 && target.y >= 0);
    };
    to(tr("Left"), 0, -1);
    to(tr("Right"), 0, 1);
    to(tr("Up"), -1, 0);
    to(tr("Down"), 1, 0);
    menu.addAction(tr("Remove"), this, [this, cell] { models().controls.remove(cell); });
    menu.exec(where);
}

} // namespace Desktop
