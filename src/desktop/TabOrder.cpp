#include "desktop/TabOrder.h"

#include <QGridLayout>
#include <QScrollArea>
#include <QSplitter>
#include <algorithm>
#include <tuple>
#include <vector>

namespace Desktop {

namespace {

using Stops = std::vector<QWidget*>;

void addTo(Stops& stops, QWidget* widget);

void addTo(Stops& stops, const QLayout& layout) {
    std::vector<std::tuple<int, int, QLayoutItem*>> items; // by row and column, where there are such
    for (int i = 0; i < layout.count(); ++i) {
        int row = 0;
        int column = i;
        if (const auto* const grid = qobject_cast<const QGridLayout*>(&layout)) {
            int rows = 0;
            int columns = 0;
            grid->getItemPosition(i, &row, &column, &rows, &columns);
        }
        items.emplace_back(row, column, layout.itemAt(i));
    }
    std::stable_sort(items.begin(), items.end(), [](const auto& a, const auto& b) {
        return std::tie(std::get<0>(a), std::get<1>(a)) < std::tie(std::get<0>(b), std::get<1>(b));
    });
    for (const auto& [row, column, item] : items) {
        if (item->layout() != nullptr) {
            addTo(stops, *item->layout());
        } else {
            addTo(stops, item->widget());
        }
    }
}

void addTo(Stops& stops, QWidget* widget) {
    if (widget == nullptr || !widget->isVisible() || !widget->isEnabled() || widget->isWindow()) {
        return;
    }
    if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr) {
        stops.push_back(widget); // what it is made of is its own affair
        return;
    }
    if (const auto* const splitter = qobject_cast<const QSplitter*>(widget)) {
        for (int i = 0; i < splitter->count(); ++i) {
            addTo(stops, splitter->widget(i));
        }
    } else if (const auto* const area = qobject_cast<const QScrollArea*>(widget)) {
        addTo(stops, area->widget());
    } else if (widget->layout() != nullptr) {
        addTo(stops, *widget->layout());
    }
}

} // namespace

QWidget* nextByTab(QWidget& window, const QWidget* from, bool forward) {
    Stops stops;
    if (window.layout() != nullptr) {
        addTo(stops, *window.layout());
    }
    if (stops.empty()) {
        return nullptr;
    }
    auto here = stops.end();
    for (const QWidget* each = from; each != nullptr && here == stops.end(); each = each->parentWidget()) {
        here = std::find(stops.begin(), stops.end(), each);
    }
    if (here == stops.end()) {
        return forward ? stops.front() : stops.back();
    }
    if (forward) {
        return here + 1 == stops.end() ? stops.front() : *(here + 1);
    }
    return here == stops.begin() ? stops.back() : *(here - 1);
}

bool focusNextByTab(QWidget& window, bool forward) {
    QWidget* const next = nextByTab(window, window.focusWidget(), forward);
    if (next == nullptr) {
        return false;
    }
    for (QWidget* each = next->parentWidget(); each != nullptr; each = each->parentWidget()) {
        if (auto* const area = qobject_cast<QScrollArea*>(each)) {
            area->ensureWidgetVisible(next);
        }
    }
    next->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

} // namespace Desktop
