// The computer keyboard, drawn: each key with what it types and what it plays.
#pragma once

#include "desktop/widgets/Instrument.h"

#include <QPointF>
#include <QRectF>
#include <cstdint>
#include <map>
#include <set>
#include <vector>

namespace Desktop {

class ComputerKeyboard final : public Instrument {
    Q_OBJECT

public:
    struct Face {
        QString legend; // what it types
        QString action; // what it does, in short
        QString help;
        QColor colour; // invalid: none
    };

    explicit ComputerKeyboard(QWidget* parent);

    // By key code (class Key).
    void setFaces(std::map<std::uint32_t, Face> faces);
    void setDown(std::uint32_t code, bool down);
    void clearDown();
    void select(std::uint32_t code);
    [[nodiscard]] std::uint32_t selected() const { return selected_; }
    // Every key that is drawn, and the name of each in place of a legend.
    [[nodiscard]] static std::vector<std::uint32_t> codes();
    [[nodiscard]] QRectF rectOf(std::uint32_t code) const;

    [[nodiscard]] QString valueText() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    void chosen(std::uint32_t code);    // clicked, or Enter
    void activated(std::uint32_t code); // double clicked, or Enter: to be edited
    void menuAsked(std::uint32_t code, QPoint globalPosition);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] std::uint32_t codeAt(const QPointF& point) const;
    [[nodiscard]] QSizeF unit() const; // pixels of a key as wide as most
    void step(QPointF direction);

    std::map<std::uint32_t, Face> faces_;
    std::set<std::uint32_t> down_;
    std::uint32_t selected_ = 'Q';
    std::uint32_t hovered_ = 0;
};

} // namespace Desktop
