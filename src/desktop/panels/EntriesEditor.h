// What a key or a button does: a list of functions for going down and coming up, and the forms of the chosen ones.
#pragma once

#include "input/KeyConfiguration.h"

#include <QCheckBox>
#include <QWidget>
#include <functional>
#include <vector>

namespace Desktop {

class FunctionForm;
class ListChooser;
class Models;

class EntriesEditor final : public QWidget {
    Q_OBJECT

public:
    using Entry = Backend::ComputerInput::FunctionEntry;

    // `thing` for assistive technology: "key".
    EntriesEditor(Models& models, const QString& thing, QWidget* parent);

    // From outside: nobody is told.
    void setEntries(const std::vector<Entry>& entries);
    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }
    // Other entries are shown from now on: those of another key.
    void startOver();
    // To the first form.
    void takeFocus();

signals:
    void edited(); // by the user; the end of a gesture is told to the edits

private:
    void showAll();
    void change(const std::function<void(Entry&)>& work);

    Models& models_;
    std::vector<Entry> entries_;
    ListChooser* chooser_;
    FunctionForm *down_, *up_;
    QCheckBox* keepSending_;
};

} // namespace Desktop
