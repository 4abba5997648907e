// What a window is told by the whole backend, and what it may ask.
#include "BackendRig.h"
#include "core/QelMessageManager.h"
#include "generators/OscList.h"
#include "generators/OscillatorMessages.h"
#include "gui/GuiMessages.h"
#include "gui/QelGuiFactory.h"
#include "input/ComputerInputMessageManager.h"
#include "input/ComputerInputMessages.h"
#include "input/ControlMessageManager.h"
#include "input/ControlMessages.h"
#include "input/FunctionFactory.h"
#include "input/JoystickMap.h"
#include "input/JoystickMessages.h"
#include "midiengine/ZoneMap.h"
#include "midiinput/ConfigurationSection.h"
#include "support/BareGui.h"
#include "values/OnOffToggle.h"
#include "values/SelectType.h"

#include <gmock/gmock.h>
#include <set>

using Gui::ChangedSetting;
using Gui::GuiMessage;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class WindowTest : public testing::Test {
protected:
    WindowTest() {
        Gui::QelGuiFactory::setBuilder([](auto& backend, const auto& preferences, const auto& inputs,
                                          const auto& outputs, const auto& sequences, bool) {
            return std::make_unique<TestSupport::BareGui>(backend, preferences, inputs, outputs, sequences);
        });
        gui = static_cast<TestSupport::BareGui*>(rig.qel->getQelMessageManager().sendCreateQelGui(false));
        listen();
        gui->create(nullptr);
        settle();
    }
    ~WindowTest() override {
        gui->stopListening();
        rig.stop();
        Gui::QelGuiFactory::setBuilder({});
    }

    void listen() {
        const auto note = [this](const std::string& line) { told.push_back(line); };
        gui->handlers[idOf(GuiMessage::setting)] = [this](std::uintptr_t which, std::intptr_t value) {
            settings[static_cast<ChangedSetting>(which)] = static_cast<int>(value);
        };
        gui->handlers[idOf(GuiMessage::panel)] = [note](std::uintptr_t panel, std::intptr_t how) {
            note(std::string(Gui::panelNames[panel]) + " " + std::to_string(how));
        };
        gui->handlers[idOf(GuiMessage::midiSent)] = [note](std::uintptr_t w, std::intptr_t l) {
            const Backend::MidiEngine::QelMidiMessage sent(w, l);
            note("sent " + std::to_string(sent.getD1()) + " to " + std::to_string(sent.getOutput()));
        };
        gui->handlers[idOf(GuiMessage::midiReceived)] = [note](std::uintptr_t w, std::intptr_t l) {
            const Backend::MidiEngine::QelMidiMessage received(w, l);
            note("received " + std::to_string(received.getD1()) + " from " + std::to_string(received.getInput()));
        };
        gui->handlers[idOf(GuiMessage::zones)] = [note](std::uintptr_t, std::intptr_t l) {
            note("zones " + std::to_string(Backend::takeCopy<Backend::Zones::ZoneMap>(l)->size()));
        };
        gui->on<std::string>(idOf(GuiMessage::defaultBank), [](const std::string&) {});
        gui->on<std::string>(idOf(GuiMessage::help), [note](const std::string& text) { note("help " + text); });
        gui->on<std::vector<Backend::MidiInputPort>>(idOf(GuiMessage::inputPorts), [note](const auto& ports) {
            note("inputs " + std::to_string(ports.size()));
        });
        gui->on<std::vector<Backend::MidiOutputPort>>(idOf(GuiMessage::outputPorts), [note](const auto& ports) {
            note("outputs " + std::to_string(ports.size()));
        });
        gui->on<Gui::ProgramInfo>(idOf(GuiMessage::program),
                                  [note](const auto& program) { note("program '" + program.name + "'"); });
        gui->on<Gui::BankInfo>(idOf(GuiMessage::bank), [](const auto&) {});
        gui->on<Gui::LayersInfo>(idOf(GuiMessage::layers), [note](const auto& info) {
            note("layers " + std::to_string(info.layers.size()) + (info.layers.at(0).mono ? " mono" : ""));
        });
        gui->on<Gui::WindowMove>(idOf(GuiMessage::moveWindow), [note](const auto& move) {
            note("move " + move.x.toXmlString() + " " + move.y.toXmlString());
        });
        gui->on<Backend::ComputerInput::KeyConfigurationMap>(
            Backend::ComputerInput::keysMessage,
            [note](const auto& map) { note("keys " + std::to_string(map.size())); });
        gui->on<std::vector<Backend::ComputerInput::KeyConfiguration>>(Backend::ComputerInput::keysPutMessage,
                                                                       [](const auto&) {});
        gui->on<Backend::Controls::ControlMap>(Backend::Controls::controlsMessage, [note](const auto& map) {
            note("controls " + std::to_string(map.size()));
        });
        gui->on<std::vector<Backend::Controls::Control>>(Backend::Controls::controlsPutMessage, [](const auto&) {});
        gui->on<std::set<Cell>>(Backend::Controls::controlsSelectedMessage, [](const auto&) {});
        gui->on<Backend::Oscillators::OscList>(Backend::Oscillators::oscListMessage, [](const auto&) {});
        gui->on<Backend::Joystick::JoystickMap>(Backend::Joystick::joysticksMessage, [](const auto&) {});
        gui->on<Backend::MidiInput::MidiEventConfigurationMap>(Backend::MidiInput::midiInputLoadedMessage,
                                                               [](const auto&) {});
    }

    // Lets the backend do what was posted, then handles what it posted.
    void settle() {
        rig.after([](auto& backend) { backend.postPublishStatus(); });
        static_cast<void>(Platform::dispatchWindowMessages());
    }
    std::vector<std::string> toldAfter(const std::function<void(Backend::QelIF&)>& operation) {
        told.clear();
        rig.after([&](auto& backend) { backend.postCall(operation); });
        static_cast<void>(Platform::dispatchWindowMessages());
        return std::exchange(told, {});
    }

    BackendRig rig;
    TestSupport::BareGui* gui = nullptr;
    std::map<ChangedSetting, int> settings;
    std::vector<std::string> told;
};

TEST_F(WindowTest, IsToldEverythingWhenItOpens) {
    EXPECT_THAT(told,
                ElementsAre("inputs 2", "outputs 3", "program ''", "layers 1", "zones 0", "keys 75", "controls 13"));
    EXPECT_EQ(settings.at(ChangedSetting::tempo), 120);
    EXPECT_EQ(settings.at(ChangedSetting::midiThru), 1);
}

TEST_F(WindowTest, IsToldOnceOfEachChangeAndOfNothingElse) {
    EXPECT_THAT(toldAfter([](auto& qel) { qel.changeLayerMono(SelectType::fixed(0), OnOffToggle("on")); }),
                ElementsAre("layers 1 mono"));
    EXPECT_THAT(toldAfter([](auto& qel) { qel.changeLayerMono(SelectType::fixed(0), OnOffToggle("on")); }), IsEmpty());
    EXPECT_THAT(toldAfter([](auto& qel) {
                    Backend::Zones::ZoneMap zones;
                    zones.set({3, 0, {}, {}, true});
                    qel.setZones(zones);
                }),
                ElementsAre("zones 1"));
    EXPECT_THAT(toldAfter([](auto& qel) { qel.changeTempo(RelativeFixedValue::fixed(90), true); }), IsEmpty());
    EXPECT_EQ(settings.at(ChangedSetting::tempo), 90);
    EXPECT_THAT(toldAfter([](auto& qel) { qel.changeProgramName("Warm"); }), ElementsAre("program 'Warm'"));
}

TEST_F(WindowTest, FunctionsReachPanelsAndWindow) {
    EXPECT_THAT(toldAfter([](auto& qel) {
                    qel.executeFunction("<ShowHelp type=\"on\"/>");
                    qel.executeFunction("<ShowCC type=\"off\"/>");
                    qel.executeFunction("<ShowSystem/>");
                    qel.executeFunction("<MoveWindow x=\"+10\" y=\"\"/>");
                }),
                ElementsAre("help 1", "cc 0", "system 2", "move +10 "));
}

TEST_F(WindowTest, SeesWhatComesInAndWhatGoesOut) {
    told.clear();
    rig.afterMidi(0x90, 60, 100, 1);
    static_cast<void>(Platform::dispatchWindowMessages());
    EXPECT_THAT(told, ElementsAre("received 60 from 1", "sent 60 to 0"));
}

TEST_F(WindowTest, SeesOscillatorsAndEditsThemWhileTheyPlay) {
    using Backend::Oscillators::OscList;
    OscList shown;
    gui->on<OscList>(Backend::Oscillators::oscListMessage, [&](const OscList& list) { shown = list; });
    gui->handlers[Backend::Oscillators::oscMovedMessage] = [this](std::uintptr_t id, std::intptr_t value) {
        told.push_back("osc " + std::to_string(id) + " " + std::to_string(value));
    };
    const std::string file = rig.writeFile("osc.prg", "<ProgramFile><Program><Oscillators>"
                                                      "<Oscillator type='pulse' speed='4' midiMessage='Pitch Bend'/>"
                                                      "<Oscillator type='pulse' speed='6'/>"
                                                      "</Oscillators></Program></ProgramFile>");
    rig.after([&](auto& backend) { backend.postLoadProgram(file); });
    settle();
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_FALSE(shown.find({1})->playing);
    rig.after([](auto& backend) { backend.postExecuteFunction("<ChangeOscPlaying type=\"1\" value=\"on\"/>"); });
    told.clear();
    settle();
    EXPECT_TRUE(shown.find({1})->playing);
    EXPECT_THAT(told, ElementsAre("osc 1 0"));
    settle(); // the third tick
    settle();
    EXPECT_THAT(told, ElementsAre("osc 1 0", "osc 1 127"));

    OscList edited = shown;
    edited.find({0})->playing = true;
    edited.find({1})->speed = 1000;
    const auto put = [&](auto& qel) { qel.setOscillators(edited); };
    rig.after([&](auto& backend) { backend.postCall(put); });
    told.clear();
    for (int i = 0; i < 5; ++i) {
        settle();
    }
    EXPECT_THAT(told, testing::Contains("osc 0 127")) << "it plays";
    EXPECT_THAT(told, testing::Not(testing::Contains("osc 1 0"))) << "it goes on, slower, where it was";
    edited.find({1})->max = 50;
    rig.after([&](auto& backend) { backend.postCall(put); });
    settle();
    EXPECT_TRUE(shown.find({1})->playing && shown.find({0})->playing);
    EXPECT_EQ(shown.find({1})->max, 50);
}

TEST_F(WindowTest, KeysThatItPutsComeBackToIt) {
    auto function = Backend::FunctionManagement::createDefaultFunction("ResetQel", *rig.qel);
    Backend::ComputerInput::KeyConfiguration key{Key("Pause"), {{false, std::move(function), nullptr}}, true};
    rig.qel->getComputerInputMessageManager().postPut({key});
    EXPECT_THAT(toldAfter([](auto&) {}), ElementsAre("keys 76"));
}

TEST_F(WindowTest, HearsNothingOnceItHasGone) {
    rig.after([](auto& backend) { backend.postRemoveGuiWindowHandle(); });
    EXPECT_EQ(rig.qel->getGuiWindowHandle(), nullptr);
    EXPECT_THAT(toldAfter([](auto& qel) { qel.changeProgramName("Late"); }), IsEmpty());
    rig.afterMidi(0x90, 60, 100);
    static_cast<void>(Platform::dispatchWindowMessages());
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(WindowTest, PanelsShowAsTheWindowSays) {
    gui->showing(Gui::Panel::zone, true);
    EXPECT_TRUE(gui->isZonePanelShowing());
    EXPECT_FALSE(gui->isHelpPanelShowing());
    gui->showing(Gui::Panel::zone, false);
    EXPECT_FALSE(gui->isZonePanelShowing());
}

} // namespace
