#include "desktop/DesktopGui.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/Backup.h"
#include "desktop/Palette.h"
#include "desktop/panels/ControlsPanel.h"
#include "desktop/panels/KeysPanel.h"
#include "desktop/panels/OutputPanel.h"
#include "desktop/panels/SystemBar.h"
#include "gui/GuiMessages.h"
#include "input/HelpTexts.h"
#include "values/Rect.h"

#include <QApplication>
#include <QFontMetrics>
#include <QMenu>
#include <utility>

namespace Desktop {

using Gui::GuiMessage;
using Gui::Panel;

namespace Detail {

constexpr int frameMilliseconds = 16;

class Fonts final : public Gui::GdiManager {
public:
    int lineHeight() const override { return QFontMetrics(QApplication::font()).height(); }
};

class Skins final : public Gui::Skinner {
public:
    explicit Skins(MainWindow& window) : window_(window) {}
    std::vector<std::string> skins() const override {
        std::vector<std::string> names;
        for (const QString& name : paletteNames()) {
            names.push_back(name.toStdString());
        }
        return names;
    }
    std::string skin() const override { return paletteName().toStdString(); }
    void setSkin(const std::string& name) override { window_.setPaletteName(QString::fromStdString(name)); }

private:
    MainWindow& window_;
};

// A menu of the toolkit as the facade knows it.
class ToolkitMenu final : public Gui::PopupMenu {
public:
    explicit ToolkitMenu(QMenu& menu) : menu_(menu) {}
    void show() override { menu_.popup(QCursor::pos()); }

private:
    QMenu& menu_;
};

// What is asked of the window itself.
class WindowRequests final : public Model {
public:
    explicit WindowRequests(MainWindow& window) {
        on(idOf(GuiMessage::panel), [&window](std::uintptr_t panel, std::intptr_t how) {
            how == 2 ? window.togglePanel(static_cast<Panel>(panel))
                     : window.showPanel(static_cast<Panel>(panel), how == 1);
        });
        onCopy<Gui::WindowMove>(idOf(GuiMessage::moveWindow), [&window](const Gui::WindowMove& move) {
            window.move(move.x.applyTo(window.x()), move.y.applyTo(window.y()));
        });
        // Dialogs run loops of their own: they begin when the messages have been handled.
        const auto later = [this, &window](GuiMessage message, void (*work)(MainWindow&)) {
            on(idOf(message), [&window, work](std::uintptr_t, std::intptr_t) {
                QTimer::singleShot(0, &window, [&window, work] { work(window); });
            });
        };
        later(GuiMessage::showSaveDialog, [](MainWindow& w) { w.openSave(); });
        later(GuiMessage::showLoadDialog, [](MainWindow& w) { w.openLoad(); });
        later(GuiMessage::showSetupDialog, [](MainWindow& w) { w.openSetup(); });
        later(GuiMessage::importFile, [](MainWindow& w) { w.openImport(); });
        later(GuiMessage::showProgramMenu, [](MainWindow& w) { w.bar().showProgramMenu(); });
        later(GuiMessage::showDefaultOutputMenu, [](MainWindow& w) { w.bar().showOutputMenu(); });
        on(idOf(GuiMessage::focus), [&window](std::uintptr_t, std::intptr_t) { window.activateWindow(); });
        on(idOf(GuiMessage::clearComputerKeyboard),
           [&window](std::uintptr_t, std::intptr_t) { window.keys().refreshDown(); });
        onCopy<std::string>(idOf(GuiMessage::help),
                            [&window](const std::string& text) { window.showHelp(QString::fromStdString(text)); });
        on(idOf(GuiMessage::helpId), [&window](std::uintptr_t id, std::intptr_t) {
            const std::string_view text = Backend::helpText(static_cast<int>(id));
            window.showHelp(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
        });
        onCopy<std::string>(idOf(GuiMessage::fault),
                            [&window](const std::string& text) { window.showFault(QString::fromStdString(text)); });
    }
};

} // namespace Detail

struct DesktopGui::Parts {
    explicit Parts(MainWindow& window) : requests(window), skins(window), programs(window.output().programMenu()) {}
    Detail::WindowRequests requests;
    Detail::Fonts fonts;
    Detail::Skins skins;
    Detail::ToolkitMenu programs;
};

DesktopGui::DesktopGui(Backend::QelIF& backend, const Backend::RegistrySettings& settings,
                       const std::vector<Backend::MidiInputPort>& inputs,
                       const std::vector<Backend::MidiOutputPort>& outputs, const Gui::SequencePresetList& sequences)
    : QelGui(backend, settings, inputs, outputs, sequences) {}

DesktopGui::~DesktopGui() {
    destroy();
    closeWindow();
}

void DesktopGui::initialize() {
    shown_ = std::make_unique<Shown>();
    shown_->models = std::make_unique<Models>(*this);
}

void DesktopGui::create(Platform::WindowHandle) {
    if (!shown_) {
        initialize();
    }
    Shown& shown = *shown_;
    shown.window =
        std::make_unique<MainWindow>(*shown.models, [this](Panel panel, bool on) { noteShowing(panel, on); });
    parts_ = std::make_unique<Parts>(*shown.window);
    getGuiMessageManagerMaster().addMessageManager(parts_->requests);
    KeysModel& keys = shown.models->keys;
    shown.keys = std::make_unique<KeyCapture>(
        *shown.window,
        KeyCapture::Player{
            [&keys](const Key& key) { return keys.isMapped(key); },
            [&keys](const Key& key) { return keys.isGlobal(key); },
            [&keys](const Key& key, bool repeat) { keys.press(key, repeat); },
            [&keys](const Key& key) { keys.release(key); }, [this] { shown_->window->panic(); },
            [this](std::uint32_t code, const QString& text) { shown_->window->keys().setLegend(code, text); }});
    shown.hook = makeKeyboardHook([this](std::uint32_t scan, bool down) { shown_->keys->globalKey(scan, down); });
    shown.focus = watchFocus([this](bool isHere) { shown_->keys->keyboardMoved(isHere); });
    shown.window->bar().setGlobalKeysObstacle(QString::fromStdString(shown.hook->obstacle()));
    const auto followGlobal = [this] {
        shown_->hook->setActive(shown_->models->settings.isOn(Gui::ChangedSetting::globalKeyboard));
    };
    QObject::connect(&shown.models->settings, &SettingsModel::settingChanged, shown.window.get(),
                     [followGlobal](Gui::ChangedSetting setting, int) {
                         if (setting == Gui::ChangedSetting::globalKeyboard) {
                             followGlobal();
                         }
                     });
    followGlobal();
    shown.frame.setInterval(Detail::frameMilliseconds);
    shown.frame.setSingleShot(true);
    QObject::connect(&shown.frame, &QTimer::timeout, &shown.frame, [this] { takeIn(); });
    shown.wake = makeWakeUp([this] {
        if (!shown_->frame.isActive()) {
            shown_->frame.start();
        }
    });
    openWindow([wake = shown.wake.get()] { wake->signal(); });
    getQelMessageManager().postPublishStatus(); // whatever it is: the window is told of everything after it
    shown.models->events.start();
    shown.window->restoreState();
    shown.window->show();
    shown.window->setFocus(Qt::OtherFocusReason); // else the first button would take it
    offerBackup(*shown.models, shown.window.get());
}

void DesktopGui::takeIn() {
    static_cast<void>(Platform::dispatchWindowMessages());
    // What has been sent is known twice: here, and a little later from the display thread.
    if (shown_ && shown_->models->events.drain()) {
        shown_->frame.start();
    }
}

void DesktopGui::end() {
    if (shown_ && shown_->keys) {
        shown_->keys->releaseAll();
        shown_->window->output().keyboardReleased();
    }
}

// The endpoint stays until the end of the object, for what is still on its way.
void DesktopGui::destroy() {
    if (!shown_ || !shown_->window) {
        return;
    }
    end();
    getQelMessageManager().postRemoveGuiWindowHandle();
    shown_->models->events.stop();
    shown_->frame.stop();
    shown_->hook.reset();
    shown_->focus.reset();
    shown_->keys.reset();
    shown_->window->hide();
}

Gui::GdiManager& DesktopGui::getGdiManager() {
    return parts_->fonts;
}

Gui::Skinner& DesktopGui::getSkinner() {
    return parts_->skins;
}

Gui::PresetGuiOwner* DesktopGui::getComputerInputPanelAsPresetGuiOwner() {
    return window().panel(Panel::computerInput);
}

Gui::PresetGuiOwner* DesktopGui::getControlPanelAsPresetGuiOwner() {
    return window().panel(Panel::control);
}

Gui::PresetGuiOwner* DesktopGui::getLayerPanelAsPresetGuiOwner() {
    return window().panel(Panel::layer);
}

Gui::PresetGuiOwner* DesktopGui::getOscillatorPanelAsPresetGuiOwner() {
    return window().panel(Panel::oscillator);
}

Gui::PresetGuiOwner* DesktopGui::getJoystickInputPanelAsPresetGuiOwner() {
    return window().panel(Panel::joystick);
}

Gui::PresetGuiOwner* DesktopGui::getMidiInputPanelAsPresetGuiOwner() {
    return window().panel(Panel::midiInput);
}

Gui::OutputPanel& DesktopGui::getOutputPanel() {
    return window().output();
}

Gui::PopupMenu& DesktopGui::getGmProgramMenu() {
    return parts_->programs;
}

Gui::PopupMenu& DesktopGui::getDataMenu() {
    return parts_->programs; // the only list of data that there is
}

void DesktopGui::setDockToBottomEdge(bool on) {
    models().settings.set(Gui::ChangedSetting::dockToBottomEdge, on ? 1 : 0);
}

Gui::MusicKeyboardCtl& DesktopGui::getMainMusicKeyboardCtl() {
    return window().output();
}

void DesktopGui::addSequencePreset(const std::string& name, const std::string& sequence) {
    getSequencePresetList()[name] = sequence;
    getQelMessageManager().postAddSequencePreset(name, sequence);
}

void DesktopGui::editSequencePreset(const std::string& name, const std::string& sequence) {
    addSequencePreset(name, sequence);
}

void DesktopGui::deleteSequencePreset(const std::string& name) {
    getSequencePresetList().erase(name);
    getQelMessageManager().postCall([name](Backend::QelIF& qel) { qel.deleteSequencePreset(name); });
}

Gui::KeyboardHookProxy& DesktopGui::getKeyboardHookProxy() {
    return *shown_->hook;
}

WindowsLib::Rect DesktopGui::getMainWindowPosition() {
    const QRect now = window().geometry();
    return {now.left(), now.top(), now.right() + 1, now.bottom() + 1};
}

} // namespace Desktop
