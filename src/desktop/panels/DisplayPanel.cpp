#include "desktop/panels/DisplayPanel.h"

#include "desktop/models/Models.h"
#include "desktop/widgets/EventList.h"

#include <QApplication>
#include <QClipboard>

namespace Desktop {

using Gui::ChangedSetting;

DisplayPanel::DisplayPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::display, tr("Display"), tr("What comes in and what goes out, with the way it took"),
                 models, parent) {
    list_ = new EventList(models.events, this);
    list_->describe(tr("Events"), tr("The last ten thousand events. The wheel and the arrow keys go back in time"));
    body().addWidget(list_);
    const auto toggle = [&](const QString& text, const QString& name, const QString& help) {
        QToolButton* const button = makeButton(text, name, help, this);
        button->setCheckable(true);
        addHeadWidget(button);
        return button;
    };
    in_ = toggle(tr("in"), tr("Show incoming events"), tr("Lists what your MIDI devices send"));
    connect(in_, &QToolButton::clicked, this,
            [this](bool on) { this->models().settings.set(ChangedSetting::displayMidiInputEvents, on); });
    out_ = toggle(tr("out"), tr("Show outgoing events"), tr("Lists what this program sends"));
    connect(out_, &QToolButton::clicked, this,
            [this](bool on) { this->models().settings.set(ChangedSetting::displayMidiOutputEvents, on); });
    QToolButton* const pause = toggle(tr("pause"), tr("Pause the list"), tr("Keeps the list still, to read it"));
    connect(pause, &QToolButton::toggled, list_, &EventList::setPaused);
    QToolButton* const copy = makeButton(tr("copy"), tr("Copy the list"), tr("Copies the list as text"), this);
    connect(copy, &QToolButton::clicked, this, [this] { QApplication::clipboard()->setText(list_->wholeText()); });
    addHeadWidget(copy);
    QToolButton* const clear = makeButton(tr("clear"), tr("Clear the list"), tr("Empties the list"), this);
    connect(clear, &QToolButton::clicked, &models.events, &EventsModel::clear);
    addHeadWidget(clear);
    connect(&models.settings, &Model::changed, this, &DisplayPanel::refresh);
    refresh();
}

void DisplayPanel::refresh() {
    in_->setChecked(models().settings.isOn(ChangedSetting::displayMidiInputEvents));
    out_->setChecked(models().settings.isOn(ChangedSetting::displayMidiOutputEvents));
    list_->setLargeFont(models().settings.isOn(ChangedSetting::largeDisplayFont));
}

} // namespace Desktop
