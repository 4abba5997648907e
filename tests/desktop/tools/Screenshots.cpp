// screenshots FOLDER [all]: draws the window and each panel in each palette, in the scale that QT_SCALE_FACTOR says;
// with "all" also the dialogs and menus, narrow windows, panels with nothing in them and with very much.
#include "desktop/DesktopApplication.h"
#include "desktop/DesktopRig.h"
#include "desktop/Palette.h"
#include "desktop/TabOrder.h"
#include "desktop/dialogs/FileDialogs.h"
#include "desktop/dialogs/PresetDialog.h"
#include "desktop/dialogs/SetupDialog.h"
#include "desktop/dialogs/TakeDialog.h"
#include "desktop/panels/KeysPanel.h"
#include "desktop/panels/LayersPanel.h"
#include "desktop/panels/PanelFrame.h"
#include "desktop/widgets/ComputerKeyboard.h"
#include "generators/SequenceText.h"
#include "midiengine/Layer.h"
#include "midiengine/ZoneMap.h"
#include "midiinput/TranslationFactory.h"
#include "values/SelectType.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <algorithm>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace {

// A configuration of an event, from its translations as they are stored.
void translate(DesktopRig& rig, const char* message, std::initializer_list<const char*> translations) {
    using namespace Backend::MidiInput;
    MidiEventConfiguration configuration(
        {MidiEvent::ANY, MidiEvent::ANY, Backend::MidiEngine::MidiMessage(std::string_view(message))});
    for (const char* const each : translations) {
        configuration.translations.push_back(std::move(TranslationManagement::readTranslation(each).value()));
    }
    rig.models().midiInput.put("scene", configuration);
}

// Something to look at: layers, zones, an oscillator, held notes.
void furnish(DesktopRig& rig) {
    rig.after([&] {
        rig.models().layers.add();
        rig.models().layers.add();
        auto layers = rig.models().layers.layers();
        layers[0].maxNote = Note(59);
        layers[0].transpose = RelativeFixedValue::relative(12);
        layers[0].compress = Fraction(3, 4);
        layers[0].mono = true;
        layers[1].minNote = Note(60);
        layers[1].velocity = RelativeFixedValue::relative(10);
        layers[2].minNote = Note(60);
        layers[2].minVelocity = 90;
        layers[2].mute = true;
        for (int i = 0; i < 3; ++i) {
            rig.models().layers.change("scene", i, layers[static_cast<std::size_t>(i)]);
        }
        rig.models().zones.add();
        rig.models().zones.add();
        rig.models().zones.transpose(1, -12);
        rig.models().oscillators.add();
        rig.models().oscillators.add();
        rig.models().oscillators.play(0, true);
        rig.models().program.rename("Warm Split");
        translate(rig, "Controller Change,1",
                  {R"(<Translation condition="D2 gt 63"><ChangeTempo value="D2 +20"/></Translation>)"});
        translate(rig, "Note On,48",
                  {R"(<Translation condition="D2 ge 64"><MidiNoteOn zone="0" d1="D1 +12" d2="D2 -20"/></Translation>)",
                   R"(<Translation condition="Off"><MidiNoteOn d1="D1 +7" d2="D2" channel="1"/></Translation>)",
                   R"(<Translation condition="D2 lt 20"><ShowZone type="toggle"/></Translation>)"});
        translate(rig, "Pitch Bend", {});
    });
    for (const char key : {'Q', 'E', 'T', 'Z'}) {
        rig.after([&] { rig.models().keys.press(Key(static_cast<std::uint32_t>(key)), false); });
    }
    rig.after([&] { rig.models().controls.move({0, 2}, 88); });
    QElapsedTimer timer; // the display thread tells of what was sent
    for (timer.start(); timer.elapsed() < 200;) {
        QApplication::processEvents();
        rig.gui->takeIn();
    }
}

// The editor of a panel that has one.
void openEditors(QWidget& panel, bool on) {
    QList<QPointer<QToolButton>> buttons;
    for (QToolButton* const each : panel.findChildren<QToolButton*>()) {
        buttons << each;
    }
    for (const QPointer<QToolButton>& button : std::as_const(buttons)) {
        if (button && button->isCheckable() && button->isChecked() != on &&
            (button->accessibleName() == "Details of layer 1" || button->text() == "✎")) {
            button->click();
        }
    }
}

void save(QWidget& widget, const QString& file) {
    QApplication::processEvents();
    widget.grab().save(file);
}

// What opens in front of the window and runs a loop of its own: a dialog or a menu.
void saveWhatOpens(const QString& file, const std::function<void()>& open) {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        QWidget* const popup = QApplication::activePopupWidget();
        if (QWidget* const front = popup != nullptr ? popup : QApplication::activeModalWidget()) {
            timer.stop();
            save(*front, file);
            front->close();
        }
    });
    timer.start(0);
    open();
    timer.stop();
}

constexpr std::initializer_list<Gui::Panel> usual{Gui::Panel::computerInput, Gui::Panel::control, Gui::Panel::layer,
                                                  Gui::Panel::display, Gui::Panel::output};

void only(DesktopRig& rig, std::initializer_list<Gui::Panel> panels) {
    for (std::size_t i = 1; i < Gui::panelCount; ++i) {
        const auto panel = static_cast<Gui::Panel>(i);
        if (rig.window().panel(panel) != nullptr) {
            rig.window().showPanel(panel, std::find(panels.begin(), panels.end(), panel) != panels.end());
        }
    }
}

// The steps of the third layer, with all that a step can be.
void saveSequence(DesktopRig& rig, const QString& file) {
    only(rig, {Gui::Panel::layer});
    rig.window().resize(700, 800);
    rig.named<QToolButton>("Details of layer 3").click();
    if (rig.models().layers.layers()[2].sequence) {
        rig.after([] {}); // made in the palette before
    } else {
        rig.click("New sequence of layer 3");
        rig.after([&] {
            const std::string name = rig.models().layers.layers()[2].sequence->preset;
            rig.models().sequences.change(name, Backend::SequenceManagement::sequenceOf(
                                                    "0|4|7 L480,12 V-40 L240,-,7 L120|-5 V20,0,3 V-80,-,-12 L960,24"));
        });
    }
    if (auto& edit = rig.named<QPushButton>("Sequence editor of layer 3"); !edit.isChecked()) {
        edit.click();
    }
    save(*rig.window().panel(Gui::Panel::layer), file);
    rig.named<QToolButton>("Details of layer 3").click();
    only(rig, usual);
}

void saveDialogs(DesktopRig& rig, const QString& folder, const QString& ending) {
    const auto file = [&](const QString& name) { return folder + "/" + name + "-" + ending + ".png"; };
    Desktop::MainWindow& window = rig.window();
    const auto show = [&](QWidget& dialog, const QString& name) {
        dialog.show();
        save(dialog, file(name));
        dialog.hide();
    };
    {
        Desktop::SaveDialog dialog(rig.models(), {"Computer keys", "Layers", "Controls"}, &window);
        show(dialog, "dialog-save");
    }
    {
        Desktop::SetupDialog dialog(rig.models(), &window);
        auto* const tabs = dialog.findChild<QTabWidget*>();
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentIndex(i);
            show(dialog, "dialog-setup-" + QString::number(i));
        }
    }
    {
        Desktop::TakeDialog dialog(rig.models(), &window);
        show(dialog, "dialog-take");
    }
    {
        Desktop::PresetDialog dialog("Layers", "Warm Split", {"Warm Split"}, {{"L:1", true}, {"L:2", false}}, &window);
        show(dialog, "dialog-preset");
        for (QAbstractButton* const each : dialog.findChildren<QAbstractButton*>()) {
            if (each->isCheckable()) {
                each->setChecked(true);
            }
        }
        show(dialog, "dialog-preset-chosen");
    }
    saveWhatOpens(file("dialog-load"), [&] { Desktop::loadFile(rig.models(), &window); });
    saveWhatOpens(file("dialog-import"), [&] { Desktop::importFile(rig.models(), &window); });
    const auto choose = [&](const QString& button, const QString& item) {
        QMenu* const menu = rig.named<QToolButton>(button).menu();
        emit menu->aboutToShow();
        for (QAction* const action : menu->actions()) {
            if (action->text() == item) {
                action->trigger();
            }
        }
    };
    saveWhatOpens(file("dialog-rename"), [&] { choose("Program", "Rename…"); });
    saveWhatOpens(file("menu-of-a-key"), [&] { emit window.keys().keyboard().menuAsked('Q', {}); });
    saveWhatOpens(file("dialog-unsaved"), [&] { window.askAboutUnsaved(); });
    const auto menu = [&](QToolButton& button, const QString& name) {
        if (button.menu() != nullptr && button.isVisible()) {
            saveWhatOpens(file("menu-" + name), [&] { button.showMenu(); });
        }
    };
    for (QToolButton* const each : window.findChildren<QToolButton*>()) {
        menu(*each, each->accessibleName().toLower().replace(' ', '-'));
    }
}

// Each thing that Tab comes to, with its ring, side by side.
void saveRings(DesktopRig& rig, const QString& file) {
    QApplication::setActiveWindow(&rig.window());
    std::vector<QPixmap> pictures;
    QWidget* const first = Desktop::nextByTab(rig.window(), nullptr, true);
    QWidget* here = first;
    do {
        here->setFocus(Qt::TabFocusReason);
        QApplication::processEvents();
        const QPoint corner = here->mapTo(&rig.window(), QPoint(0, 0));
        QRect around = QRect(corner, here->size()).adjusted(-6, -6, 6, 6).intersected(rig.window().rect());
        around.setSize(around.size().boundedTo({260, 120}));
        pictures.push_back(rig.window().grab(around));
        here = Desktop::nextByTab(rig.window(), here, true);
    } while (here != first && pictures.size() < 200);
    rig.window().setFocus(Qt::OtherFocusReason);
    QPixmap sheet(1400, 1400);
    sheet.fill(Qt::gray);
    QPainter painter(&sheet);
    QPoint at;
    int below = 0;
    for (const QPixmap& each : pictures) {
        const QSize size = each.size() / each.devicePixelRatio();
        if (at.x() + size.width() > sheet.width()) {
            at = {0, below};
        }
        painter.drawPixmap(at, each);
        at.rx() += size.width() + 4;
        below = std::max(below, at.y() + size.height() + 4);
    }
    painter.end();
    sheet.copy(0, 0, sheet.width(), std::min(below, sheet.height())).save(file);
}

// The window as it is on small screens, and with all that it has.
void saveWindows(DesktopRig& rig, const QString& folder, const QString& ending) {
    using Gui::Panel;
    const auto shot = [&](const QString& name, QSize size) {
        rig.window().resize(size);
        QApplication::processEvents();
        rig.window().resize(size);
        save(rig.window(), folder + "/window-" + name + "-" + ending + ".png");
    };
    only(rig, usual);
    shot("1024", {1024, 640});
    shot("960", {960, 540});
    shot("1920", {1920, 1080});
    only(rig, {Panel::midiInput, Panel::layer});
    shot("midi-narrow", {1024, 640});
    for (const Panel each : {Panel::computerInput, Panel::control, Panel::layer, Panel::zone, Panel::oscillator,
                             Panel::joystick, Panel::display, Panel::output, Panel::help}) {
        only(rig, {each});
        openEditors(*rig.window().panel(each), true);
        shot("only-" + QString::fromLatin1(Gui::panelNames[static_cast<std::size_t>(each)].data()), {960, 540});
        openEditors(*rig.window().panel(each), false);
    }
    only(rig, {Panel::computerInput, Panel::control, Panel::layer, Panel::zone, Panel::oscillator, Panel::midiInput,
               Panel::joystick, Panel::display, Panel::output, Panel::help});
    shot("everything", {1600, 900});
    only(rig, usual);
}

void fillUp(DesktopRig& rig) {
    rig.after([&] {
        for (int i = 0; i < 13; ++i) {
            rig.models().layers.add();
        }
        for (int i = 0; i < 14; ++i) {
            rig.models().oscillators.add();
        }
        for (int i = 0; i < 14; ++i) {
            rig.models().zones.add();
        }
        rig.models().program.rename("A program with a name that is longer than any bar has room for, and then some");
    });
    rig.after([] {});
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        return 2;
    }
    const bool all = argc > 2 && std::string_view(argv[2]) == "all";
    const QString folder = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(folder);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Desktop::DesktopApplication application([] { return Desktop::HostNews{}; });
    DesktopRig rig;
    if (all) {
        rig.window().resize(1320, 860);
        rig.window().showPanel(Gui::Panel::zone, true);
        rig.window().showPanel(Gui::Panel::oscillator, true);
        rig.window().showPanel(Gui::Panel::midiInput, true);
        save(rig.window(), folder + "/window-empty-dark.png");
        rig.window().showPanel(Gui::Panel::zone, false);
        rig.window().showPanel(Gui::Panel::oscillator, false);
        rig.window().showPanel(Gui::Panel::midiInput, false);
    }
    furnish(rig);
    for (const QString& name : Desktop::paletteNames()) {
        QString ending = name.toLower().replace(' ', '-');
        rig.window().setPaletteName(name);
        rig.window().resize(1320, 860);
        save(rig.window(), folder + "/window-" + ending + ".png");
        for (std::size_t i = 0; i < Gui::panelCount; ++i) {
            const auto panel = static_cast<Gui::Panel>(i);
            if (Desktop::PanelFrame* const frame = rig.window().panel(panel)) {
                rig.window().showPanel(panel, true);
                openEditors(*frame, true);
                rig.window().resize(1500, 1250);
                if (panel == Gui::Panel::midiInput || panel == Gui::Panel::joystick || panel == Gui::Panel::control ||
                    panel == Gui::Panel::oscillator) { // whose forms want room
                    only(rig, {panel});
                    rig.window().resize(panel == Gui::Panel::midiInput ? QSize(900, 720) : QSize(640, 660));
                }
                QApplication::processEvents();
                save(*frame,
                     folder + "/panel-" + QString::fromLatin1(Gui::panelNames[i].data()) + "-" + ending + ".png");
                openEditors(*frame, false);
                only(rig, usual);
            }
        }
        if (all) {
            saveSequence(rig, folder + "/panel-sequence-" + ending + ".png");
            rig.window().showPanel(Gui::Panel::cc, true);
            save(*rig.window().panel(Gui::Panel::output), folder + "/panel-cc-" + ending + ".png");
            rig.window().showPanel(Gui::Panel::cc, false);
            openEditors(rig.window(), true);
            saveRings(rig, folder + "/rings-" + ending + ".png");
            openEditors(rig.window(), false);
            saveDialogs(rig, folder, ending);
            saveWindows(rig, folder, ending);
        }
    }
    if (all) {
        fillUp(rig);
        for (const QString& name : Desktop::paletteNames()) {
            rig.window().setPaletteName(name);
            saveWindows(rig, folder, "full-" + name.toLower().replace(' ', '-'));
        }
    }
    return 0;
}
