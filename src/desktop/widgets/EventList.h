// The list of events: only what is seen is painted, whatever its length.
#pragma once

#include "desktop/models/EventsModel.h"
#include "desktop/widgets/Instrument.h"

#include <QScrollBar>

namespace Desktop {

// Follows the newest event while its end is in sight.
class EventList final : public Instrument {
    Q_OBJECT

public:
    EventList(EventsModel& events, QWidget* parent);

    void setPaused(bool on); // it stays as it is; events go on being kept
    void setLargeFont(bool on);
    [[nodiscard]] QString textOf(int row) const;
    [[nodiscard]] QString wholeText() const; // for the clipboard
    [[nodiscard]] QString valueText() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] int rowHeight() const;
    [[nodiscard]] int visibleRows() const;
    void adjust(bool follow);

    EventsModel& events_;
    QScrollBar bar_;
    bool paused_ = false;
    bool large_ = false;
    std::deque<ListedEvent> held_; // while paused
};

} // namespace Desktop
