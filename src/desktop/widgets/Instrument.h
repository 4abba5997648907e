// What all painted widgets share: a focus ring for the keyboard, a line of help, a name and a value for assistive
// technology.
#pragma once

#include <QBasicTimer>
#include <QPainter>
#include <QString>
#include <QWidget>

namespace Desktop {

class Instrument : public QWidget {
    Q_OBJECT

public:
    explicit Instrument(QWidget* parent);

    // The name is for those who do not see it, the help for the help line.
    void describe(const QString& name, const QString& help = {});
    // What it shows at present, in words.
    [[nodiscard]] virtual QString valueText() const { return {}; }
    // The value as a number, where it has one.
    struct Range {
        bool exists = false;
        int value = 0;
        int min = 0;
        int max = 0;
        int step = 1;
    };
    [[nodiscard]] virtual Range range() const { return {}; }
    virtual void setValueByUser(int) {}

signals:
    void letGo(); // the end of a gesture

protected:
    // A step of the wheel or of a key. Several of them are one gesture: it ends when the key comes up, when the pointer
    // or the focus leaves, or after a pause.
    void stepped();
    // Ends such a gesture, if there is one.
    void endSteps();
    // Tells assistive technology that the value is another.
    void announce();
    // Call it last in a paintEvent.
    void paintRing(QPainter& painter) const;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QBasicTimer pause_; // runs while there may be further steps
};

// Makes instruments readable for assistive technology. Once, after the application has been made.
void installAccessibility();

} // namespace Desktop
