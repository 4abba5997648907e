// Chooses a function and edits its settings. The form comes from the settings' type: a new function has one at once.
#pragma once

#include "input/Function.h"

#include <QComboBox>
#include <QFormLayout>
#include <QWidget>
#include <functional>
#include <memory>

namespace Desktop {

class Models;

class FunctionForm final : public QWidget {
    Q_OBJECT

public:
    // `role` names the form for assistive technology: "when it goes down".
    FunctionForm(Models& models, const QString& role, QWidget* parent);

    // Null: none.
    void setFunction(const std::shared_ptr<const Backend::FunctionManagement::Function>& function);
    [[nodiscard]] const std::shared_ptr<const Backend::FunctionManagement::Function>& function() const {
        return function_;
    }

signals:
    void edited();

private:
    void choose(int index);
    void build();
    // Changes a copy of the function and puts it in the place of the function.
    void change(const std::function<void(Backend::FunctionManagement::Function&)>& work);

    Models& models_;
    QString role_;
    QComboBox* kind_;
    QWidget* fields_ = nullptr;
    std::shared_ptr<const Backend::FunctionManagement::Function> function_;

    friend class FormBuilder;
};

} // namespace Desktop
