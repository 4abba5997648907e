// Chooses a function and edits its settings.
#pragma once

#include "desktop/panels/ActionForm.h"
#include "input/Function.h"

#include <memory>

namespace Desktop {

class FunctionForm final : public ActionForm {
    Q_OBJECT

public:
    // `role` names the form for assistive technology: "when it goes down".
    FunctionForm(Models& models, const QString& role, QWidget* parent);

    // Null: none.
    void setFunction(const std::shared_ptr<const Backend::FunctionManagement::Function>& function);
    [[nodiscard]] const std::shared_ptr<const Backend::FunctionManagement::Function>& function() const {
        return function_;
    }

private:
    void choose(const std::string& keyword) override;
    void showSettings();

    std::shared_ptr<const Backend::FunctionManagement::Function> function_;
    std::unique_ptr<Backend::FunctionManagement::Function> draft_; // its copy, which the form changes
};

} // namespace Desktop
