// The frame of every panel: its title, its presets, its help, and its way out.
#pragma once

#include "gui/GuiParts.h"
#include "gui/Panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <string>

namespace Desktop {

class Models;

// What a panel's preset menu needs of its section.
struct PresetAccess {
    QString folder; // below the user's files, "Control Presets"
    std::function<std::string()> current;
    std::function<void(const std::string&)> load;
    std::function<void(const std::string&)> save;
    std::function<void(const std::string&)> remove;
};

class PanelFrame : public QWidget, public Gui::PresetGuiOwner {
    Q_OBJECT

public:
    PanelFrame(Gui::Panel panel, const QString& title, const QString& help, Models& models, QWidget* parent);

    [[nodiscard]] Gui::Panel panel() const { return panel_; }
    [[nodiscard]] QString title() const { return title_->text(); }

    std::string presetName() const override;
    void loadPreset(const std::string& name) override;
    void savePreset(const std::string& name) override;

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
    // A button in the style of the panels.
    [[nodiscard]] static QToolButton* makeButton(const QString& text, const QString& name, const QString& help,
                                                 QWidget* parent);
    void paintEvent(QPaintEvent* event) override;

private:
    void fillPresetMenu();

    Gui::Panel panel_;
    Models& models_;
    QLabel* title_;
    QHBoxLayout* head_;
    QVBoxLayout* body_;
    QToolButton* presetButton_;
    QMenu* presetMenu_;
    PresetAccess presets_;
};

} // namespace Desktop
