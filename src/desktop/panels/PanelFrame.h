// The frame of every panel: its title, its presets, its help, and its way out.
#pragma once

#include "desktop/dialogs/PresetDialog.h"
#include "gui/GuiParts.h"
#include "gui/Panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidget>
#include <algorithm>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

namespace Desktop {

class MenuButton;
class Models;

// What a panel's preset menu needs of its section.
struct PresetAccess {
    QString folder; // below the user's files, "Control Presets"
    std::function<std::string()> current;
    std::function<void(const std::string&)> load;
    std::function<void(const std::string&)> save;
    std::function<void(const std::string&)> remove;
    // Where single elements can be saved: all of them, in order; and how to save those at some places of that list.
    std::function<std::vector<PresetElement>()> elements = {};
    std::function<void(const std::string&, const std::vector<int>&)> saveChosen = {};
};

// All ids of a collection, in the order of `less`.
template <typename Collection, typename Less = std::less<>>
[[nodiscard]] auto idsOf(const Collection& collection, Less less = {}) {
    std::vector<std::remove_cvref_t<decltype(collection.begin()->first)>> ids;
    for (const auto& [id, element] : collection) {
        ids.push_back(id);
    }
    std::sort(ids.begin(), ids.end(), less);
    return ids;
}
// Those at some places of that order; places beyond it are passed over.
template <typename Collection, typename Less = std::less<>>
[[nodiscard]] auto idsAt(const Collection& collection, const std::vector<int>& places, Less less = {}) {
    const auto all = idsOf(collection, less);
    auto ids = all;
    ids.clear();
    for (const int place : places) {
        if (place >= 0 && static_cast<std::size_t>(place) < all.size()) {
            ids.push_back(all[static_cast<std::size_t>(place)]);
        }
    }
    return ids;
}

class PanelFrame : public QWidget, public Gui::PresetGuiOwner {
    Q_OBJECT

public:
    PanelFrame(Gui::Panel panel, const QString& title, const QString& help, Models& models, QWidget* parent);

    [[nodiscard]] Gui::Panel panel() const { return panel_; }
    [[nodiscard]] QString title() const { return title_->text(); }

    std::string presetName() const override;
    void loadPreset(const std::string& name) override;
    void savePreset(const std::string& name) override;
    [[nodiscard]] bool hasPresets() const { return static_cast<bool>(presets_.save); }
    // Asks for a name and what is wanted, and saves that.
    void askToSavePreset();
    // Deletes the file, if the answer is yes.
    void askToDeletePreset(const QString& name);

    // A button in the style of the panels.
    [[nodiscard]] static QToolButton* makeButton(const QString& text, const QString& name, const QString& help,
                                                 QWidget* parent);

signals:
    void closeAsked();
    void helpAsked(const QString& page);

protected:
    [[nodiscard]] Models& models() { return models_; }
    [[nodiscard]] QVBoxLayout& body() { return *body_; }
    [[nodiscard]] QHBoxLayout& head() { return *head_; } // further buttons go before its last three
    void addHeadWidget(QWidget* widget);
    void setPresets(PresetAccess access);
    void showPresetName();
    void paintEvent(QPaintEvent* event) override;

private:
    void fillPresetMenu();

    Gui::Panel panel_;
    Models& models_;
    QLabel* title_;
    QHBoxLayout* head_;
    QVBoxLayout* body_;
    MenuButton* presetButton_;
    QMenu* presetMenu_;
    PresetAccess presets_;
};

} // namespace Desktop
