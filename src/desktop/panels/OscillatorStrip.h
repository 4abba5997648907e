// One oscillator: its wave, its speed, its range, and what it moves.
#pragma once

#include "desktop/panels/StripsPanel.h"
#include "generators/Oscillator.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>
#include <functional>

namespace Desktop {

class Models;
class NumberField;
class WaveView;

class OscillatorStrip final : public Strip {
    Q_OBJECT

public:
    OscillatorStrip(Models& models, int oscillator, QWidget* parent);
    void refresh() override;
    void setValue(int value);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    using Oscillator = Backend::Oscillators::Oscillator;
    using Set = std::function<void(Oscillator&, int)>;

    void makeHead();
    void makeSpeed(QHBoxLayout& row);
    void makeMessage(QHBoxLayout& row);
    void makeWay(QHBoxLayout& row);
    void makeSending(QHBoxLayout& row);
    // Named for assistive technology; each is shown and hidden by refresh().
    void name(QWidget& widget, const QString& text, const QString& help) const;
    [[nodiscard]] QComboBox* makeMenu(const QStringList& items, const QString& text, const QString& help, Set set);
    [[nodiscard]] NumberField* makeField(int min, int max, const QString& text, const QString& help, Set set);
    void add(QHBoxLayout& row, const QString& caption, QWidget* widget);
    [[nodiscard]] QHBoxLayout& addRow();
    [[nodiscard]] Oscillator now() const;
    void change(const QString& text, const std::function<void(Oscillator&)>& work);

    Models& models_;
    int place_;
    WaveView* wave_;
    QToolButton* select_;
    QPushButton* play_;
    QComboBox *type_, *speedMode_, *length_, *event_;
    NumberField *speed_, *min_, *max_, *number_, *output_, *channel_, *zone_, *stop_, *detail_;
};

} // namespace Desktop
