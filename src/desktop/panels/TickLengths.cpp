#include "desktop/panels/TickLengths.h"

#include "values/TimeIntervals.h"

namespace Desktop {

void addTickLengths(QComboBox& box) {
    for (const int ticks : {3840, 1920, 960, 720, 480, 360, 320, 240, 160, 120, 80, 60, 40, 30}) {
        box.addItem(QString::fromStdString(timeIntervalName(ticks)), ticks);
    }
}

void showTickLength(QComboBox& box, std::int32_t ticks) {
    int place = box.findData(ticks);
    if (place < 0) {
        place = box.count();
        box.addItem(QString::fromStdString(timeIntervalName(ticks)), ticks);
    }
    box.setCurrentIndex(place);
}

std::int32_t tickLengthOf(const QComboBox& box) {
    return box.currentData().toInt();
}

} // namespace Desktop
