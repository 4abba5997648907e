// A message that carries a value, in fields: what it is and where it goes.
#pragma once

#include "desktop/widgets/NumberField.h"
#include "input/ValueEvent.h"

#include <QComboBox>
#include <QWidget>
#include <functional>

namespace Desktop {

class Models;

class ValueEventFields final : public QWidget {
    Q_OBJECT

public:
    // `role` stands behind the names of the fields: " of the control".
    ValueEventFields(Models& models, const QString& role, QWidget* parent);

    // From outside: nobody is told.
    void setEvent(const Backend::ValueEvent& event);
    [[nodiscard]] const Backend::ValueEvent& event() const { return event_; }

    // Modulation, to begin with.
    [[nodiscard]] static Backend::ValueEvent fresh();

signals:
    void edited(); // by the user; the end of a gesture is told to the edits

private:
    void change(const std::function<void(Backend::ValueEvent&)>& work);

    Models& models_;
    Backend::ValueEvent event_;
    QComboBox* kind_;
    NumberField *number_, *output_, *channel_, *zone_;
};

} // namespace Desktop
