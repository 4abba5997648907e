#include "desktop/panels/MidiInputTable.h"

#include "desktop/Palette.h"
#include "desktop/models/ActionTexts.h"
#include "desktop/models/Models.h"
#include "midiinput/IncomingMessage.h"

#include <algorithm>
#include <utility>

namespace Desktop {

using namespace Backend::MidiInput;
using Backend::MidiEngine::QelMidiMessage;

namespace {

constexpr int lampMilliseconds = 250;

QString whatItDoes(const MidiEventConfiguration& configuration, std::size_t place) {
    const auto& translation = configuration.translations[place];
    if (!translation) {
        return QObject::tr("(this translation could not be read)");
    }
    const auto& condition = translation->getCondition();
    const QString action = longTextOf(*translation, configuration.event);
    return condition.isOff() ? action
                             : conditionText(condition, configuration.event.message.getMessageType()) + " → " + action;
}

} // namespace

MidiInputTable::MidiInputTable(Models& models, QWidget* parent) : QTreeWidget(parent), models_(models) {
    setHeaderLabels({tr("message"), tr("what it does")});
    setAccessibleName(tr("Incoming messages and what they do"));
    setStatusTip(tr("Choose a message to edit what it does; messages that are not here go to the layers"));
    setFocusPolicy(Qt::TabFocus);
    setItemsExpandable(false);
    setRootIsDecorated(false);
    setIndentation(grid(3));
    setMinimumSize(grid(50), grid(20));
    lamp_.setSingleShot(true);
    connect(&lamp_, &QTimer::timeout, this, [this] { setLit(std::nullopt); });
    connect(&models.playing, &PlayingModel::received, this, &MidiInputTable::light);
    connect(this, &QTreeWidget::currentItemChanged, this, &MidiInputTable::tellChosen);
}

// What it does has at least half of the table.
void MidiInputTable::fitColumns() {
    resizeColumnToContents(0);
    setColumnWidth(0, std::min(columnWidth(0), viewport()->width() / 2));
}

QTreeWidgetItem* MidiInputTable::itemOf(const Event& event) const {
    const auto found = std::find(events_.begin(), events_.end(), event);
    return found == events_.end() ? nullptr : topLevelItem(static_cast<int>(found - events_.begin()));
}

void MidiInputTable::fill() {
    const MidiEventConfigurationMap& map = models_.midiInput.map();
    std::vector<Event> events;
    std::vector<std::size_t> counts;
    for (const auto& [event, configuration] : map) {
        events.push_back(event);
    }
    std::sort(events.begin(), events.end());
    for (const Event& event : events) {
        counts.push_back(map.find(event)->translations.size());
    }
    const QSignalBlocker quiet(this);
    if (events != events_ || counts != counts_) {
        clear();
        for (const std::size_t count : counts) {
            auto* const item = new QTreeWidgetItem(this);
            for (std::size_t i = 0; count > 1 && i < count; ++i) {
                auto* const child = new QTreeWidgetItem(item);
                child->setFirstColumnSpanned(true);
            }
            item->setExpanded(true);
        }
        events_ = std::move(events);
        counts_ = std::move(counts);
    }
    for (const Event& event : events_) {
        const MidiEventConfiguration& configuration = *map.find(event);
        const std::size_t count = configuration.translations.size();
        QTreeWidgetItem& item = *itemOf(event);
        item.setText(0, models_.midiInput.textOf(event));
        item.setText(1, count == 0 ? tr("goes on to the layers")
                                   : (count == 1 ? whatItDoes(configuration, 0) : tr("%1 things").arg(count)));
        item.setToolTip(0, item.text(0));
        item.setToolTip(1, item.text(1));
        for (int i = 0; i < item.childCount(); ++i) {
            item.child(i)->setText(0, whatItDoes(configuration, static_cast<std::size_t>(i)));
        }
    }
    fitColumns();
}

void MidiInputTable::choose(const Event& event, std::size_t translation) {
    const QSignalBlocker quiet(this);
    if (QTreeWidgetItem* const item = itemOf(event)) {
        setCurrentItem(item->childCount() > 0 ? item->child(static_cast<int>(translation)) : item);
    }
}

void MidiInputTable::tellChosen() {
    if (QTreeWidgetItem* const item = currentItem()) {
        QTreeWidgetItem* const row = item->parent() != nullptr ? item->parent() : item;
        emit chosen(events_[static_cast<std::size_t>(indexOfTopLevelItem(row))],
                    item->parent() != nullptr ? static_cast<std::size_t>(row->indexOfChild(item)) : 0);
    }
}

void MidiInputTable::resizeEvent(QResizeEvent* event) {
    QTreeWidget::resizeEvent(event);
    fitColumns();
}

void MidiInputTable::light(const QelMidiMessage& message) {
    const LookUp found = models_.midiInput.map().lookUp(asHandled(message));
    if (found.configuration == nullptr || !isVisible()) {
        return;
    }
    lamp_.start(lampMilliseconds);
    setLit(found.configuration->event);
}

void MidiInputTable::setLit(const std::optional<Event>& event) {
    if (event == lit_) {
        return;
    }
    const auto paint = [this](const QVariant& colour) {
        if (QTreeWidgetItem* const item = lit_ ? itemOf(*lit_) : nullptr) {
            item->setData(0, Qt::ForegroundRole, colour);
        }
    };
    paint({});
    lit_ = event;
    paint(Desktop::palette().green);
}

} // namespace Desktop
