// One layer: what it takes, what it makes of it, where it sends it.
#pragma once

#include "desktop/panels/StripsPanel.h"
#include "midiengine/Layer.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QWidget>
#include <functional>

namespace Desktop {

class LayerPattern;
class Models;
class NumberField;
class RangeBar;

class LayerStrip final : public Strip {
    Q_OBJECT

public:
    LayerStrip(Models& models, int layer, QWidget* parent);
    void refresh() override;
    void showLamp();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void buildDetails(QWidget* details);
    void change(const QString& text, const std::function<void(Backend::Layers::Layer&)>& work);
    [[nodiscard]] Backend::Layers::Layer layer() const;

    Models& models_;
    int place_;
    bool lit_ = false;
    bool showing_ = false; // what is set now comes from the model
    RangeBar* range_;
    QToolButton* name_;
    QLabel* summary_;
    QWidget* details_;
    QPushButton *mute_, *solo_, *mono_;
    NumberField *low_, *high_, *minVelocity_, *maxVelocity_, *transpose_, *velocity_, *numerator_, *denominator_,
        *channel_;
    QComboBox *key_, *output_, *zone_, *toggle_, *transposeKind_, *velocityKind_;
    QPushButton* stack_;
    LayerPattern* pattern_;
};

} // namespace Desktop
