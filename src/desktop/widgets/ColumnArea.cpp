#include "desktop/widgets/ColumnArea.h"

#include "desktop/Palette.h"

#include <QEvent>
#include <QScrollBar>
#include <algorithm>

namespace Desktop {

ColumnArea::ColumnArea(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
}

QSize ColumnArea::minimumSizeHint() const {
    constexpr int most = 100; // units of the grid: all panels have to fit beside each other
    const int content = widget() != nullptr ? widget()->minimumSizeHint().width() : 0;
    return {std::min(content + verticalScrollBar()->sizeHint().width(), grid(most)), grid(16)};
}

bool ColumnArea::eventFilter(QObject* object, QEvent* event) {
    const bool handled = QScrollArea::eventFilter(object, event);
    if (object == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
    }
    return handled;
}

} // namespace Desktop
