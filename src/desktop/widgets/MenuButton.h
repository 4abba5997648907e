// A button that shows what has been chosen, and opens the menu of what else there is.
#pragma once

#include <QMenu>
#include <QToolButton>

namespace Desktop {

// What does not fit is cut off with dots. Assistive technology is told the value as the button's description.
class MenuButton final : public QToolButton {
    Q_OBJECT

public:
    // The menu's owner keeps it for as long as the button lives.
    MenuButton(const QString& name, const QString& help, QMenu* menu, QWidget* parent);

    void setValue(const QString& value);
    // A figure before the value, in the colour of values.
    void setFigure(const QString& figure);
    // Units of the grid: how much room it asks for at most, and does with at least.
    void setWidths(int least, int most);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int figureWidth() const;

    QString value_;
    QString figure_;
    int least_ = 16;
    int most_ = 40;
};

} // namespace Desktop
