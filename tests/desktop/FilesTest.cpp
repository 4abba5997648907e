// Presets, programs, banks and takes through their dialogs, click by click.
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/Backup.h"
#include "desktop/DesktopRig.h"
#include "desktop/dialogs/FileDialogs.h"
#include "desktop/dialogs/TakeDialog.h"
#include "desktop/panels/PanelFrame.h"
#include "desktop/panels/SystemBar.h"
#include "generators/SequenceText.h"
#include "platform/PathText.h"
#include "platform/SafeFiles.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Gui::Panel;
using testing::HasSubstr;
using testing::Not;

constexpr const char* twoPrograms = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<Bank>\n"
                                    "<Program name=\"One\" tempo=\"120\" tempoSource=\"0\">\n</Program>\n"
                                    "<Program name=\"Two\" tempo=\"90\" tempoSource=\"0\">\n</Program>\n</Bank>\n";

class DesktopFiles : public testing::Test {
protected:
    // What is to be done with the dialogs that open one after the other while `work` runs.
    using Answer = std::function<void(QDialog&)>;
    std::string answering(std::vector<Answer> answers, const std::function<void()>& work) {
        QObject context; // ends the looking
        std::size_t next = 0;
        // Each look is a timer of its own: one that is at work does not go off in the loop of a further dialog.
        const std::function<void()> look = [&] {
            QTimer::singleShot(2, &context, look);
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || dialog->property("answered").toBool()) { // it comes back when another closes
                return;
            }
            if (next == answers.size()) {
                ADD_FAILURE() << "another dialog: " << dialog->windowTitle().toStdString();
                return dialog->reject();
            }
            dialog->setProperty("answered", true);
            answers[next++](*dialog);
        };
        look();
        std::string played = rig.after(work);
        EXPECT_EQ(next, answers.size()) << "dialogs that did not come";
        return played;
    }
    static Answer press(QMessageBox::StandardButton button) {
        return [button](QDialog& dialog) {
            auto* const box = qobject_cast<QMessageBox*>(&dialog);
            ASSERT_NE(box, nullptr) << dialog.windowTitle().toStdString();
            box->button(button)->click();
        };
    }
    static Answer file(const std::string& path) {
        return [path](QDialog& dialog) {
            auto* const files = qobject_cast<QFileDialog*>(&dialog);
            ASSERT_NE(files, nullptr) << dialog.windowTitle().toStdString();
            files->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(path));
            QMetaObject::invokeMethod(files, "accept");
        };
    }
    static void pressSave(QDialog& dialog) {
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
    }
    template <typename Widget> static Widget& in(QDialog& dialog, const QString& name) {
        for (Widget* const each : dialog.findChildren<Widget*>()) {
            if (each->accessibleName().startsWith(name)) {
                return *each;
            }
        }
        throw std::runtime_error("the dialog has no " + name.toStdString());
    }
    // The dialog that asks for a preset.
    static Answer preset(const QString& name, std::vector<int> chosen = {}) {
        return [name, chosen](QDialog& dialog) {
            in<QLineEdit>(dialog, "Name of the preset").setText(name);
            auto& list = in<QListWidget>(dialog, "What the preset holds");
            in<QCheckBox>(dialog, "Only what is chosen").setChecked(!chosen.empty());
            for (int row = 0; row < list.count(); ++row) {
                const bool on = std::find(chosen.begin(), chosen.end(), row) != chosen.end();
                list.item(row)->setCheckState(on ? Qt::Checked : Qt::Unchecked);
            }
            pressSave(dialog);
        };
    }
    // Which of the ways of the dialog that saves.
    static Answer saveTo(const QString& way) {
        return [way](QDialog& dialog) {
            in<QRadioButton>(dialog, way).setChecked(true);
            pressSave(dialog);
        };
    }

    void loadTwoPrograms() {
        const std::string bank = rig.backend.writeFile("Two.bnk", twoPrograms);
        rig.after([&] { rig.models().backend().postLoadBank(bank); });
    }
    void edit() {
        rig.after([&] { rig.models().layers.add(); });
        ASSERT_FALSE(rig.models().edits.isClean());
    }
    void clickAction(QMenu& menu, const QString& text) {
        emit menu.aboutToShow();
        for (QAction* const each : menu.actions()) {
            if (each->text().contains(text)) {
                return each->trigger();
            }
        }
        FAIL() << "no action " << text.toStdString();
    }
    [[nodiscard]] std::filesystem::path data(const std::string& file) const {
        return rig.backend.qel->getApplicationData() / Platform::pathOf(file);
    }
    [[nodiscard]] static std::string textIn(const std::filesystem::path& path) {
        const auto text = Platform::readWholeFile(path, 10'000'000);
        return text ? text.value() : "no file";
    }
    [[nodiscard]] std::string programName() { return rig.models().program.program().name; }

    DesktopRig rig;
};

struct Section {
    const char* name;
    Panel panel;
    const char* folder;
    std::function<void(Desktop::Models&)> furnish; // gives it two elements at least
    std::function<std::size_t(Desktop::Models&)> size;
    const char* element;
};

class PresetsOf : public DesktopFiles, public testing::WithParamInterface<Section> {};

TEST_P(PresetsOf, ThePanelAreSavedLoadedUndoneAndDeleted) {
    const Section& section = GetParam();
    auto& panel = *rig.window().panel(section.panel);
    rig.after([&] { section.furnish(rig.models()); });
    const std::size_t all = section.size(rig.models());
    ASSERT_GE(all, 2U);
    answering({preset("All of it")}, [&] { panel.askToSavePreset(); });
    answering({preset("One", {1})}, [&] { panel.askToSavePreset(); });
    const std::string element = std::string("<") + section.element;
    const auto count = [&](const std::string& text) {
        std::size_t found = 0;
        for (auto at = text.find(element); at != std::string::npos; at = text.find(element, at + 1)) {
            ++found;
        }
        return found;
    };
    const std::string whole = textIn(data(section.folder + std::string("/All of it.pst")));
    const std::string one = textIn(data(section.folder + std::string("/One.pst")));
    EXPECT_THAT(whole, HasSubstr("merge=\"false\""));
    EXPECT_THAT(one, HasSubstr("merge=\"true\""));
    EXPECT_EQ(count(one), 1U) << one;
    EXPECT_EQ(panel.presetName(), "All of it");
    rig.after([&] { panel.loadPreset("000 - Default"); });
    const std::size_t builtIn = section.size(rig.models());
    EXPECT_EQ(panel.presetName(), "000 - Default");
    rig.after([&] { panel.loadPreset("All of it"); });
    EXPECT_EQ(section.size(rig.models()), all);
    rig.after([&] { rig.models().edits.undo(); });
    EXPECT_EQ(section.size(rig.models()), builtIn);
    rig.after([&] { rig.models().edits.redo(); });
    EXPECT_EQ(section.size(rig.models()), all);
    answering({press(QMessageBox::No)}, [&] { panel.askToDeletePreset("One"); });
    EXPECT_TRUE(exists(data(section.folder + std::string("/One.pst"))));
    answering({press(QMessageBox::Yes)}, [&] { panel.askToDeletePreset("One"); });
    EXPECT_FALSE(exists(data(section.folder + std::string("/One.pst"))));
    EXPECT_EQ(section.size(rig.models()), all) << "what plays stays as it is";
}

INSTANTIATE_TEST_SUITE_P(
    All, PresetsOf,
    testing::Values(Section{"Layers", Panel::layer, "Layer Presets", [](auto& models) { models.layers.add(); },
                            [](auto& models) { return models.layers.layers().size(); }, "Layer "},
                    Section{"Oscillators", Panel::oscillator, "Oscillator Presets",
                            [](auto& models) {
                                models.oscillators.add();
                                models.oscillators.add();
                            },
                            [](auto& models) { return models.oscillators.list().size(); }, "Oscillator "},
                    Section{"Keys", Panel::computerInput, "Computer Input Presets",
                            [](auto& models) { models.keys.clear(Key('Q')); },
                            [](auto& models) { return models.keys.map().size(); }, "Key "},
                    Section{"Controls", Panel::control, "Control Presets",
                            [](auto& models) {
                                models.controls.remove({0, 0});
                            },
                            [](auto& models) { return models.controls.map().size(); }, "Control "},
                    Section{"Joystick", Panel::joystick, "Joystick Presets",
                            [](auto& models) {
                                using Backend::MidiEngine::MessageType;
                                for (const int axis : {0, 1}) {
                                    Backend::Joystick::AxisEvent event;
                                    event.event.message =
                                        Backend::MidiEngine::MidiMessage(MessageType::controllerChange, 7);
                                    models.joysticks.putAxis({{0, axis}, {event}});
                                }
                            },
                            [](auto& models) {
                                return models.joysticks.map().axes.size() + models.joysticks.map().buttons.size();
                            },
                            "Axis "}),
    [](const auto& param) { return std::string(param.param.name); });

TEST_F(DesktopFiles, APresetThatCannotBeWrittenIsSaid) {
    rig.backend.writeFile("x", "");
    static_cast<void>(rig.backend.takeFaults());
    rig.after([&] { rig.window().panel(Panel::layer)->savePreset("a/b"); });
    EXPECT_THAT(rig.backend.takeFaults(), testing::SizeIs(1));
    rig.after([&] { rig.models().ask([](auto& qel) { qel.deleteOscillatorPreset("not there"); }); });
    EXPECT_THAT(rig.backend.takeFaults(), testing::SizeIs(1));
}

TEST_F(DesktopFiles, ASequenceIsDeletedWithItsFileAndComesBack) {
    rig.after([&] { rig.named<QPushButton>("New sequence of layer 1").click(); });
    ASSERT_TRUE(exists(data("Sequences/Sequence 1.seq")));
    rig.after([&] { rig.models().sequences.change("Sequence 1", Backend::SequenceManagement::sequenceOf("0,7")); });
    rig.after([&] { rig.named<QPushButton>("Deletion of the sequence of layer 1").click(); });
    EXPECT_FALSE(exists(data("Sequences/Sequence 1.seq")));
    EXPECT_FALSE(rig.models().sequences.contains("Sequence 1"));
    EXPECT_FALSE(rig.models().layers.layers().at(0).sequence);
    rig.after([&] { rig.models().edits.undo(); });
    EXPECT_THAT(textIn(data("Sequences/Sequence 1.seq")), HasSubstr("0,7"));
    ASSERT_TRUE(rig.models().layers.layers().at(0).sequence);
    rig.after([&] { rig.models().edits.undo(); });
    EXPECT_EQ(textOf(rig.models().sequences.sequence("Sequence 1")), "0,0,0,0,0,0,0,0") << "edits before it as well";
}

TEST_F(DesktopFiles, AProgramIsSavedIntoItsSlotAndOnlyThenCountsAsSaved) {
    loadTwoPrograms();
    edit();
    answering({[](QDialog& dialog) {
                  in<QLineEdit>(dialog, "Name of the program").setText("Renamed");
                  pressSave(dialog);
              }},
              [&] { EXPECT_TRUE(rig.window().openSave()); });
    EXPECT_TRUE(rig.models().edits.isClean());
    EXPECT_THAT(textIn(data("Two.bnk")), Not(HasSubstr("\"One\"")));
    EXPECT_EQ(programName(), "Renamed");
    EXPECT_FALSE(rig.window().windowTitle().contains('*'));
}

TEST_F(DesktopFiles, WhatCannotBeSavedStaysUnsavedAndTheDialogSaysWhy) {
    loadTwoPrograms();
    edit();
    std::filesystem::remove(data("Two.bnk"));
    std::filesystem::create_directories(data("Two.bnk/in the way"));
    const auto fails = [&](QDialog& dialog) {
        pressSave(dialog);
        QTimer::singleShot(300, &dialog, [&] {
            EXPECT_TRUE(dialog.isVisible()) << "it waits";
            rig.window().showFault("there is no such bank");
            EXPECT_TRUE(std::ranges::any_of(dialog.findChildren<QLabel*>(), [](const QLabel* label) {
                return label->text().contains("there is no such bank");
            }));
            dialog.reject();
        });
    };
    answering({fails}, [&] { EXPECT_FALSE(rig.window().openSave()); });
    EXPECT_FALSE(rig.models().edits.isClean());
    EXPECT_THAT(rig.backend.takeFaults(), testing::SizeIs(1));
}

TEST_F(DesktopFiles, AProgramFileIsSavedAndLoaded) {
    loadTwoPrograms();
    edit();
    const std::string path = Platform::textOf(data("Mine.prg"));
    answering({saveTo("As a program file"), file(path)}, [&] { EXPECT_TRUE(rig.window().openSave()); });
    EXPECT_THAT(textIn(Platform::pathOf(path)), HasSubstr("<ProgramFile>"));
    edit();
    answering({press(QMessageBox::Discard), file(path)}, [&] { EXPECT_TRUE(rig.window().openLoad()); });
    EXPECT_EQ(rig.models().layers.layers().size(), 2U);
    EXPECT_TRUE(rig.models().edits.isClean());
    EXPECT_FALSE(rig.models().edits.canUndo());
}

TEST_F(DesktopFiles, ABankIsSavedAsAnotherFile) {
    loadTwoPrograms();
    edit();
    const std::string path = Platform::textOf(data("Copy.bnk"));
    answering({saveTo("The whole bank"), file(path)}, [&] { rig.window().openSave(); });
    EXPECT_THAT(textIn(Platform::pathOf(path)), HasSubstr("\"Two\""));
}

TEST_F(DesktopFiles, TheSaveDialogLeadsToPresets) {
    loadTwoPrograms();
    edit();
    answering({[](QDialog& dialog) {
                   in<QRadioButton>(dialog, "A part of it").setChecked(true);
                   auto& part = in<QComboBox>(dialog, "Part that is saved");
                   part.setCurrentIndex(part.findText("Layers"));
                   pressSave(dialog);
               },
               preset("Two layers")},
              [&] { EXPECT_FALSE(rig.window().openSave()) << "the program itself is not saved"; });
    EXPECT_TRUE(exists(data("Layer Presets/Two layers.pst")));
}

TEST_F(DesktopFiles, FilesOfVersionTwoAreImported) {
    loadTwoPrograms();
    edit();
    const std::string corpus = std::string(TEMBREL_SOURCE_DIR) + "/tests/corpus/version2/";
    const std::string bank = Platform::textOf(data("Imported"));
    answering({press(QMessageBox::Discard), file(corpus + "bank.v2"), file(bank)}, [&] { rig.window().openImport(); });
    rig.after([] {});
    EXPECT_EQ(programName(), "Split & Bend");
    EXPECT_TRUE(rig.models().edits.isClean()) << "edits of what was there before are gone";
    const std::string program = Platform::textOf(data("Imported.prg"));
    edit();
    answering({press(QMessageBox::Cancel)}, [&] { rig.window().openImport(); });
    EXPECT_EQ(rig.models().edits.count(), 1);
    answering({press(QMessageBox::Discard), file(corpus + "program.v2"), file(program)},
              [&] { rig.window().openImport(); });
    rig.after([] {});
    EXPECT_TRUE(exists(data("Imported.prg")));
    EXPECT_TRUE(rig.models().edits.isClean());
}

struct Leaving {
    const char* name;
    std::function<void(DesktopFiles&, DesktopRig&)> leave;
};

class UnsavedEdits : public DesktopFiles, public testing::WithParamInterface<Leaving> {};

// One after the other: cancelled, then saved.
TEST_P(UnsavedEdits, AreAskedAboutBefore) {
    loadTwoPrograms();
    edit();
    const auto leave = [&] { GetParam().leave(*this, rig); };
    answering({press(QMessageBox::Cancel)}, leave);
    EXPECT_FALSE(rig.models().edits.isClean());
    EXPECT_EQ(programName(), "One");
    EXPECT_TRUE(rig.window().isVisible());
    answering({press(QMessageBox::Save), [](QDialog& dialog) { pressSave(dialog); }}, leave);
    EXPECT_TRUE(rig.models().edits.isClean());
    EXPECT_TRUE(programName() != "One" || !rig.window().isVisible());
    EXPECT_THAT(textIn(data("Two.bnk")), HasSubstr("<Layer "));
}

INSTANTIATE_TEST_SUITE_P(All, UnsavedEdits,
                         testing::Values(Leaving{"TheNextProgram",
                                                 [](auto&, auto& rig) {
                                                     rig.template named<QPushButton>("Next program").click();
                                                 }},
                                         Leaving{"AProgramOfTheMenu",
                                                 [](auto&, auto& rig) {
                                                     QMenu& menu = *rig.template named<QToolButton>("Program").menu();
                                                     emit menu.aboutToShow();
                                                     menu.actions().at(1)->trigger();
                                                 }},
                                         Leaving{"TheEnd", [](auto&, auto& rig) { rig.window().close(); }}),
                         [](const auto& param) { return std::string(param.param.name); });

TEST_F(DesktopFiles, UnsavedEditsAreBackedUpEachMinuteAndOfferedAfterACrash) {
    edit();
    const auto aMinutePasses = [&] { rig.after([&] { rig.window().backUp(); }); };
    aMinutePasses();
    EXPECT_THAT(textIn(data("Unsaved.prg")), HasSubstr("<Layer "));
    const std::string found = textIn(data("Unsaved.prg"));
    rig.after([&] { rig.models().edits.undo(); });
    EXPECT_FALSE(exists(data("Unsaved.prg"))) << "nothing is unsaved any more";
    rig.backend.writeFile("Unsaved.prg", found);
    const auto offer = [&](QMessageBox::StandardButton button) {
        rig.after([&] { Desktop::offerBackup(rig.models(), &rig.window()); });
        auto* const box = rig.window().findChild<QMessageBox*>();
        ASSERT_NE(box, nullptr);
        rig.after([&] { box->button(button)->click(); });
    };
    offer(QMessageBox::Yes);
    EXPECT_EQ(rig.models().layers.layers().size(), 2U);
    EXPECT_FALSE(rig.models().edits.isClean()) << "what came back is still not saved";
    aMinutePasses();
    EXPECT_TRUE(exists(data("Unsaved.prg")));
    offer(QMessageBox::No);
    EXPECT_FALSE(exists(data("Unsaved.prg")));
    rig.after([&] { Desktop::offerBackup(rig.models(), &rig.window()); });
    EXPECT_EQ(rig.window().findChild<QMessageBox*>(), nullptr) << "nothing to offer";
}

TEST_F(DesktopFiles, UnsavedEditsOutliveAProgramThatIsChangedByPlaying) {
    loadTwoPrograms();
    edit();
    rig.after([&] { rig.models().keptEdits.look(); }); // as a moment after the edit
    rig.afterCall([](auto& qel) { qel.executeFunction("<ChangeProgram type=\"up\"/>"); });
    EXPECT_EQ(programName(), "Two");
    const std::string path = Platform::textOf(data("Programs/One (unsaved).prg"));
    ASSERT_TRUE(exists(Platform::pathOf(path)));
    rig.after([&] { rig.models().backend().postLoadProgram(path); });
    EXPECT_EQ(rig.models().layers.layers().size(), 2U);
}

TEST_F(DesktopFiles, TakesAreListedAndSaved) {
    Desktop::TakeDialog none(rig.models(), nullptr);
    auto& emptyList = in<QListWidget>(none, "Takes");
    EXPECT_EQ(emptyList.count(), 0);
    rig.after([&] { QTest::keyPress(&rig.window(), Qt::Key_Q); });
    rig.after([&] { QTest::keyRelease(&rig.window(), Qt::Key_Q); });
    Desktop::TakeDialog takes(rig.models(), nullptr);
    auto& list = in<QListWidget>(takes, "Takes");
    ASSERT_EQ(list.count(), 1);
    EXPECT_TRUE(list.item(0)->text().endsWith("1 note")) << list.item(0)->text().toStdString();
    const std::string path = Platform::textOf(data("played"));
    answering({file(path)}, [&] {
        for (QPushButton* const each : takes.findChildren<QPushButton*>()) {
            if (each->text().contains("Save the take")) {
                each->click();
            }
        }
    });
    EXPECT_TRUE(textIn(data("played.mid")).starts_with("MThd"));
    auto& menu = *rig.named<QToolButton>("Take").menu();
    answering({file(Platform::textOf(data("menu.mid")))}, [&] { clickAction(menu, "1 note"); });
    EXPECT_TRUE(exists(data("menu.mid")));
}

} // namespace
