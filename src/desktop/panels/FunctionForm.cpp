#include "desktop/panels/FunctionForm.h"

#include "desktop/models/Models.h"
#include "desktop/panels/SettingsForm.h"
#include "input/FunctionFactory.h"

#include <algorithm>

namespace Desktop {

using namespace Backend::FunctionManagement;

namespace {

template <typename Offer> class FunctionKinds final : public FunctionEnumerator {
public:
    explicit FunctionKinds(Offer offer) : offer_(offer) {}
    void addFunction(std::string_view keyword, std::string_view displayName) override { offer_(keyword, displayName); }

private:
    Offer offer_;
};

const ElementFormat& formatOf(const Function& function) {
    const auto& all = functionFormats();
    return *std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.name == function.getName(); });
}

} // namespace

FunctionForm::FunctionForm(Models& models, const QString& role, QWidget* parent)
    : ActionForm(models, tr("Function %1").arg(role), role, parent) {
    FunctionKinds kinds(
        [this](std::string_view keyword, std::string_view displayName) { offer(keyword, displayName); });
    enumerateFunctions(kinds);
    showSettings();
}

void FunctionForm::setFunction(const std::shared_ptr<const Function>& function) {
    if (function == function_) {
        return;
    }
    function_ = function;
    showChosen(function ? function->getName() : "NoFunction");
    showSettings();
}

void FunctionForm::choose(const std::string& keyword) {
    if (function_ && function_->getName() == keyword) {
        return;
    }
    if (keyword == "NoFunction") {
        function_.reset();
    } else {
        function_ = createDefaultFunction(keyword, models().qel());
    }
    showSettings();
    emit edited();
}

void FunctionForm::showSettings() {
    std::unique_ptr<Function> before = std::move(draft_); // until its rows are gone
    if (!function_) {
        build(0, {}, {});
        return;
    }
    draft_ = function_->clone();
    build(
        draft_->getHelpId(),
        [this] {
            function_ = draft_->clone();
            emit edited();
        },
        [this](FormRows& rows) {
            SettingsForm<FunctionFamily> form(rows, formatOf(*draft_), draft_->getMidiEvent().type);
            draft_->getSettings().accept(form);
        });
}

} // namespace Desktop
