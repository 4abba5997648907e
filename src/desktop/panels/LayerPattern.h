// What a layer makes of held notes: its arpeggio and its sequence.
#pragma once

#include "midiengine/Layer.h"

#include <QComboBox>
#include <QPushButton>
#include <QStringList>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>

namespace Desktop {

class Models;
class SequenceEditor;

class LayerPattern final : public QWidget {
    Q_OBJECT

public:
    // Makes an edit of the layer, as the text calls it.
    using Change = std::function<void(const QString& text, const std::function<void(Backend::Layers::Layer&)>& work)>;

    LayerPattern(Models& models, int layer, Change change, QWidget* parent);
    void refresh(const Backend::Layers::Layer& layer);

private:
    void chooseSequence(const std::string& name);
    void addSequence();
    void deleteSequence();
    void showEditor();

    Models& models_;
    int place_;
    Change change_;
    Backend::Layers::Layer now_;
    QStringList names_; // in the list of sequences
    QVBoxLayout* all_;
    QComboBox *arpeggio_, *beat_, *length_, *sequence_;
    QPushButton *useNote_, *useVelocity_, *useLength_, *delete_, *edit_;
    SequenceEditor* editor_ = nullptr; // from when it is first opened
};

} // namespace Desktop
