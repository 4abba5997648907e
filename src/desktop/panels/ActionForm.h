// Chooses an action and edits its settings: what the forms of functions and of translations share.
#pragma once

#include "desktop/panels/FormRows.h"

#include <QComboBox>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <string>
#include <string_view>

namespace Desktop {

class ActionForm : public QWidget {
    Q_OBJECT

signals:
    void edited();

protected:
    // `name` is that of the list of actions, `role` stands behind the names of the settings: "when it goes down".
    ActionForm(Models& models, const QString& name, QString role, QWidget* parent);

    // An action that the list offers.
    void offer(std::string_view keyword, std::string_view displayName);
    // Shows it as the chosen one.
    void showChosen(const std::string& keyword);
    // The user has chosen another action.
    virtual void choose(const std::string& keyword) = 0;

    // Makes the rows anew; without `fill` there are none. `changed` is called whenever one has changed its value.
    void build(int helpId, const std::function<void()>& changed, const std::function<void(FormRows&)>& fill);

    [[nodiscard]] Models& models() { return models_; }
    [[nodiscard]] QVBoxLayout& all() { return *all_; }
    [[nodiscard]] QComboBox& list() { return *list_; }

private:
    Models& models_;
    QString role_;
    QVBoxLayout* all_;
    QComboBox* list_;
    QWidget* fields_ = nullptr;
};

} // namespace Desktop
