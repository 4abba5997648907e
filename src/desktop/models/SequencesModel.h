// The step sequences that layers can play, by name.
#pragma once

#include "desktop/models/Model.h"
#include "generators/Sequence.h"

#include <QString>
#include <QStringList>
#include <string>

namespace Desktop {

class Models;

class SequencesModel final : public Model {
    Q_OBJECT

public:
    explicit SequencesModel(Models& models);

    [[nodiscard]] QStringList names() const;
    [[nodiscard]] bool contains(const std::string& name) const;
    // Without steps when there is none of that name.
    [[nodiscard]] Backend::SequenceManagement::Sequence sequence(const std::string& name) const;
    // "Sequence 2": the first of such names that is free.
    [[nodiscard]] std::string freeName() const;

    // An edit, which can be undone; stored at once, so that the layers with that sequence go on with it.
    void change(const std::string& name, const Backend::SequenceManagement::Sequence& after);
    // Stores a further one. Undoing other edits leaves it where it is.
    void add(const std::string& name, const Backend::SequenceManagement::Sequence& sequence);
    // Removes its file: an edit, which can be undone.
    void remove(const std::string& name);

private:
    Models& models_;
};

} // namespace Desktop
