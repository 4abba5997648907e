// The settings of one layer: what it takes, what it makes of it, where it sends it.
#pragma once

#include "midiengine/Layer.h"

#include <QComboBox>
#include <QPushButton>
#include <QWidget>
#include <functional>

namespace Desktop {

class LayerPattern;
class Models;
class NumberField;

class LayerDetails final : public QWidget {
    Q_OBJECT

public:
    // Makes an edit of the layer, as the text calls it.
    using Change = std::function<void(const QString& text, const std::function<void(Backend::Layers::Layer&)>& work)>;

    // `layer` counts from 0.
    LayerDetails(Models& models, int layer, Change change, QWidget* parent);
    void refresh(const Backend::Layers::Layer& layer);

private:
    Models& models_;
    int place_;
    Change change_;
    NumberField *low_, *high_, *minVelocity_, *maxVelocity_, *transpose_, *velocity_, *numerator_, *denominator_,
        *channel_;
    QComboBox *key_, *output_, *zone_, *toggle_, *transposeKind_, *velocityKind_;
    QPushButton* stack_;
    LayerPattern* pattern_;
};

} // namespace Desktop
