// screenshots FOLDER: draws the window and each panel in each palette, in the scale that QT_SCALE_FACTOR says.
#include "desktop/DesktopApplication.h"
#include "desktop/DesktopRig.h"
#include "desktop/Palette.h"
#include "desktop/panels/KeysPanel.h"
#include "desktop/panels/LayersPanel.h"
#include "desktop/panels/PanelFrame.h"
#include "midiengine/Layer.h"
#include "midiengine/ZoneMap.h"
#include "midiinput/TranslationFactory.h"
#include "values/SelectType.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPixmap>
#include <QPointer>
#include <QToolButton>
#include <initializer_list>
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

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(folder);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Desktop::DesktopApplication application([] { return Desktop::HostNews{}; });
    DesktopRig rig;
    furnish(rig);
    for (const QString& name : Desktop::paletteNames()) {
        QString ending = name.toLower().replace(' ', '-');
        rig.window().setPaletteName(name);
        rig.window().resize(1320, 860);
        save(rig.window(), folder + "/window-" + ending + ".png");
        for (std::size_t i = 0; i < Gui::panelCount; ++i) {
            const auto panel = static_cast<Gui::Panel>(i);
            if (Desktop::PanelFrame* const frame = rig.window().panel(panel)) {
                const bool shown = rig.window().isShowing(panel);
                rig.window().showPanel(panel, true);
                openEditors(*frame, true);
                rig.window().resize(1500, 1250);
                if (panel == Gui::Panel::midiInput) { // whose forms want room
                    rig.window().showPanel(Gui::Panel::computerInput, false);
                    rig.window().showPanel(Gui::Panel::layer, false);
                    rig.window().resize(900, 1250);
                }
                QApplication::processEvents();
                save(*frame,
                     folder + "/panel-" + QString::fromLatin1(Gui::panelNames[i].data()) + "-" + ending + ".png");
                openEditors(*frame, false);
                rig.window().showPanel(Gui::Panel::computerInput, true);
                rig.window().showPanel(Gui::Panel::layer, true);
                rig.window().showPanel(panel, shown);
            }
        }
    }
    return 0;
}
