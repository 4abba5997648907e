// A music keyboard of 88 keys to look at and to play on.
#pragma once

#include "desktop/widgets/Instrument.h"

#include <QMap>
#include <QRectF>
#include <array>
#include <functional>
#include <map>

namespace Desktop {

// The lower a key is struck, the louder. Dragging over keys is a glissando; each finger on a touch screen plays for
// itself. By keyboard the arrows move a mark and Space plays it.
class MusicKeyboard final : public Instrument {
    Q_OBJECT

public:
    static constexpr int lowest = 21;
    static constexpr int highest = 108;

    explicit MusicKeyboard(QWidget* parent);

    // The colour of a key that sounds; an invalid one: it does not.
    void setLit(int note, const QColor& colour);
    void clearLit();
    // What stands on a key, for example the letter that plays it.
    void setLetters(std::map<int, QString> letters);

    [[nodiscard]] QString valueText() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    // -1: no key there.
    [[nodiscard]] int noteAt(const QPointF& point) const;
    [[nodiscard]] QRectF rectOf(int note) const;
    void releaseAll();

signals:
    void struck(int note, int velocity); // 1..127
    void lifted(int note);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    // A finger, the mouse (-1) or the keyboard (-2) is there now; no note lifts it.
    void point(int finger, int note, int velocity);
    [[nodiscard]] int velocityAt(const QPointF& point, int note) const;

    std::map<int, QColor> lit_;
    std::map<int, QString> letters_;
    std::map<int, int> fingers_; // the note under each
    int mark_ = 60;
};

} // namespace Desktop
