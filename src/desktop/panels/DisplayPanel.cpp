#include "desktop/panels/DisplayPanel.h"

#include "desktop/models/Models.h"
#include "desktop/widgets/EventList.h"
#include "desktop/widgets/MenuButton.h"

#include <QApplication>
#include <QClipboard>
#include <functional>
#include <utility>

namespace Desktop {

using Gui::ChangedSetting;

namespace {
struct NamedKind {
    EventsModel::Kind kind;
    const char* name;
};
constexpr NamedKind kinds[]{{EventsModel::Kind::notes, "notes"},
                            {EventsModel::Kind::controllers, "controllers"},
                            {EventsModel::Kind::pitchBend, "pitch bend"},
                            {EventsModel::Kind::pressure, "pressure"},
                            {EventsModel::Kind::programs, "program changes"},
                            {EventsModel::Kind::system, "clock and system"}};
} // namespace

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
    filters_ = new QMenu(this);
    filter_ = new MenuButton(tr("Filter of the list"), tr("Which kinds of events, and of which port, are listed"),
                             filters_, this);
    connect(filters_, &QMenu::aboutToShow, this, &DisplayPanel::fillFilters);
    addHeadWidget(filter_);
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

int DisplayPanel::listHeight() const {
    return list_->height();
}

void DisplayPanel::refresh() {
    in_->setChecked(models().settings.isOn(ChangedSetting::displayMidiInputEvents));
    out_->setChecked(models().settings.isOn(ChangedSetting::displayMidiOutputEvents));
    list_->setLargeFont(models().settings.isOn(ChangedSetting::largeDisplayFont));
    const QString& port = models().events.onlyPort();
    bool all = true;
    for (const auto& [kind, name] : kinds) {
        all = all && !models().events.isHidden(kind);
    }
    filter_->setValue(port.isEmpty() ? (all ? tr("all events") : tr("some events")) : port);
}

void DisplayPanel::fillFilters() {
    filters_->clear();
    EventsModel& events = models().events;
    const auto add = [this](const QString& text, bool on, const std::function<void(bool)>& set) {
        QAction* const action = filters_->addAction(text);
        action->setCheckable(true);
        action->setChecked(on);
        connect(action, &QAction::triggered, this, [this, set](bool now) {
            set(now);
            refresh();
        });
    };
    for (const auto& [kind, name] : kinds) {
        add(tr(name), !events.isHidden(kind), [&events, kind = kind](bool on) { events.setHidden(kind, !on); });
    }
    filters_->addSeparator();
    QStringList ports;
    for (const auto& port : models().ports.inputs()) {
        ports << QString::fromStdString(port.name);
    }
    for (const auto& port : models().ports.outputs()) {
        ports << QString::fromStdString(port.name);
    }
    ports.removeDuplicates();
    add(tr("all ports"), events.onlyPort().isEmpty(), [&events](bool) { events.setOnlyPort({}); });
    for (const QString& port : std::as_const(ports)) {
        add(port, events.onlyPort() == port, [&events, port](bool) { events.setOnlyPort(port); });
    }
}

} // namespace Desktop
