// What happens on a stage while notes sound, a thousand times each: once the keys are let go, nothing sounds on.
#include "BackendRig.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "midiengine/MidiEngine.h"
#include "midiengine/ZoneMap.h"
#include "platform/Clocks.h"
#include "support/RandomCases.h"
#include "values/Key.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>

namespace {

using Backend::QelIF;
using Backend::QelMessageManager;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

constexpr int trials = 1000;
// With sanitizers, under Wine or beside ten other things as many as fit into this time, but these at least.
constexpr std::chrono::seconds enough{6};
constexpr int leastTrials = 100;
constexpr int trialsAProgram = 20;
constexpr int longestStep = 8; // ticks; no beat and no step is as long

class Faults : public testing::Test {
protected:
    template <typename Number> Number any(Number lowest, Number highest) { return random.number(lowest, highest); }
    [[nodiscard]] bool oneIn(int times) { return any(1, times) == 1; }
    [[nodiscard]] std::string text(int lowest, int highest) { return std::to_string(any(lowest, highest)); }

    [[nodiscard]] std::string anyLayers(bool arpeggios) {
        std::string layers;
        for (int count = any(1, 3); count > 0; --count) {
            layers += "<Layer output=\"" + text(-1, 2) + "\" channel=\"" + text(0, 1) + "\" transpose=\"+" +
                      text(0, 12) + "\" mono=\"" + (oneIn(4) ? "true" : "false") + "\" useNoteStack=\"" +
                      (oneIn(3) ? "false" : "true") + "\">";
            if (arpeggios && !oneIn(3)) {
                layers += "<UpArpeggio beat=\"" + text(1, 4) + "\" length=\"" + text(1, 6) + "\"/>";
            }
            layers += oneIn(4) ? "<SequenceSetting preset=\"Steps\"/></Layer>" : "</Layer>";
        }
        return "<Layers>" + layers + "</Layers>";
    }
    [[nodiscard]] std::string anyProgram() {
        return "<Program>" + anyLayers(true) + "<Zones><Zone id=\"0\" transpose=\"" + text(-12, 12) +
               "\"/><Zone id=\"1\" transpose=\"0\"/></Zones></Program>";
    }
    void SetUp() override {
        std::string programs;
        for (int i = 0; i < 4; ++i) {
            programs += anyProgram();
        }
        const std::string bank = rig.writeFile("bank.bnk", "<Bank>" + programs + "</Bank>");
        rig.after([&](QelMessageManager& backend) {
            backend.postAddSequencePreset("Steps", "0 L2,12 L3,-");
            backend.postLoadBank(bank);
        });
    }

    void press() {
        for (int count = any(1, 4); count > 0; --count) {
            held.emplace_back(MessageType::noteOn, any<std::int8_t>(48, 72), any<std::int8_t>(1, 127), std::int8_t{0},
                              QelMidiMessage::DEFAULT_OUTPUT, any<std::int8_t>(-1, 1), any<std::int8_t>(0, 1),
                              Backend::noTicks);
        }
        keys = any(0, 2);
        rig.after([&](QelMessageManager& backend) {
            for (const QelMidiMessage& each : held) {
                backend.postProcessMidiInputEvent(each);
            }
            for (int i = 0; i < keys; ++i) {
                backend.postKeyDown(keyOf(i), false);
            }
        });
    }
    void release() {
        rig.after([&](QelMessageManager& backend) {
            for (QelMidiMessage& each : held) {
                each.setToNoteOff();
                backend.postProcessMidiInputEvent(each);
            }
            for (int i = 0; i < keys; ++i) {
                backend.postKeyUp(keyOf(i));
            }
        });
        held.clear();
    }
    static Key keyOf(int i) { return Key(std::string_view(i == 0 ? "Q" : "Z")); }

    // `fault` happens while notes sound, `mended` is what brings things back before the next trial.
    void endInSilence(
        const std::function<void()>& fault, const std::function<void()>& mended = [] {}) {
        int silent = 0; // where layers had nothing to say, which is no trial
        int trial = 0;
        const auto end = Platform::monotonicTime() + enough;
        while (trial < trials && (trial < leastTrials || Platform::monotonicTime() < end)) {
            if ((trial + silent) % trialsAProgram == 0) {
                rig.after([&](QelMessageManager& backend) { backend.postChangeProgram(SelectType::fixed(any(0, 3))); });
            }
            press();
            rig.run(any(0, 4));
            for (int ticks = 0; ticks < longestStep && rig.player.sounding().empty(); ++ticks) {
                rig.run(1); // a rest, or between two notes
            }
            const bool sounds = !rig.player.sounding().empty();
            if (sounds) {
                fault();
            }
            release();
            rig.run(longestStep);
            ASSERT_TRUE(rig.player.sounding().empty()) << "trial " << trial;
            ASSERT_EQ(rig.qel->getMidiEngine().soundingNotes(), 0) << "trial " << trial;
            ASSERT_TRUE(rig.takeFaults().empty());
            if (sounds) {
                mended();
            }
            ++(sounds ? trial : silent);
            ASSERT_LE(silent, trials) << "there would be little to be said";
        }
        RecordProperty("trials", trial);
        RecordProperty("silent_ones_besides", silent);
    }

    RandomCases random;
    BackendRig rig;
    std::vector<QelMidiMessage> held;
    int keys = 0;
};

TEST_F(Faults, AnotherProgram) {
    endInSilence([&] {
        rig.after([&](QelMessageManager& backend) { backend.postChangeProgram(SelectType::fixed(any(0, 3))); });
    });
}

TEST_F(Faults, AnotherZone) {
    endInSilence([&] {
        rig.after([&](QelMessageManager& backend) {
            const auto transpose = RelativeFixedValue::fixed(any(-24, 24));
            Backend::Zones::ZoneMap zones;
            zones.set({any<std::int8_t>(0, 1), any<std::int8_t>(-12, 12), {}, {}, false});
            zones.selectLowest();
            switch (any(0, 2)) {
            case 0:
                return backend.postCall([zones](QelIF& qel) { qel.setZones(zones); });
            case 1:
                return backend.postCall([](QelIF& qel) { qel.selectZone(SelectType(SelectType::Kind::up)); });
            default:
                return backend.postCall(
                    [=](QelIF& qel) { qel.changeZoneTranspose(SelectType(SelectType::Kind::all), transpose); });
            }
        });
    });
}

TEST_F(Faults, APortIsPulledOut) {
    endInSilence(
        [&] {
            const auto which = any<std::size_t>(0, 2);
            const bool isInput = which < 2 && oneIn(2);
            (isInput ? rig.inputs[which].enabled : rig.outputs[which].enabled) = false;
            rig.after([&](QelMessageManager& backend) {
                isInput ? backend.postSetMidiInputPorts(rig.inputs) : backend.postSetMidiOutputPorts(rig.outputs);
            });
            if (!isInput) {
                rig.player.unplug(static_cast<int>(which));
            }
        },
        [&] {
            for (auto& port : rig.inputs) {
                port.enabled = true;
            }
            for (auto& port : rig.outputs) {
                port.enabled = true;
            }
            rig.after([&](QelMessageManager& backend) {
                backend.postSetMidiInputPorts(rig.inputs);
                backend.postSetMidiOutputPorts(rig.outputs);
            });
        });
}

TEST_F(Faults, TheArpeggioIsTurnedOff) {
    endInSilence(
        [&] {
            const std::string program = "<QelProgramFile><Program>" + anyLayers(false) + "</Program></QelProgramFile>";
            rig.after([&](QelMessageManager& backend) {
                backend.postCall([program](QelIF& qel) { qel.setProgramText(program); });
            });
        },
        [&] {
            rig.after([&](QelMessageManager& backend) { backend.postChangeProgram(SelectType(SelectType::Kind::up)); });
        });
}

// As the live player does, which asks for a reset once it sees how late it is.
TEST_F(Faults, TheMachineSleepsForAnHour) {
    endInSilence([&] {
        rig.sleep(3600 * 480); // at 60 beats a minute: a thousand of them are nearly all the ticks that there are
        rig.after([](QelMessageManager& backend) { backend.postResetQel(); });
    });
}

// Removed, a file in its place, or not to be written in: it is made again, or each save says so, and it plays on.
TEST_F(Faults, TheDataFolderIsGone) {
    namespace fs = std::filesystem;
    const fs::path data = rig.qel->getApplicationData();
    const auto save = [&](int bankSize) {
        rig.after([&](QelMessageManager& backend) {
            backend.postSaveToCurrentBank(1, {});
            backend.postSaveToBank((data / "other.bnk").string(), {});
            backend.postSaveToProgram((data / "one.prg").string(), {});
            backend.postAddSequencePreset("Another", "0,1");
            backend.postChangeBankSize(bankSize, {});
            backend.postSetDefaultBank((data / "other.bnk").string());
            backend.postExecuteFunction("<LoadLayerPreset preset=\"Mine\"/>");
        });
        return rig.takeFaults().size();
    };
    static_cast<void>(rig.takeFaults());
    std::error_code kept;
    if (fs::remove_all(data, kept); kept) {
        GTEST_SKIP() << "this system keeps files that are open";
    }
    EXPECT_EQ(save(8), 1U) << "but for the preset that is not there";
    fs::remove_all(data);
    std::ofstream(data) << "in the way";
    EXPECT_EQ(save(9), 6U);
    EXPECT_FALSE(rig.afterKey().empty());
    fs::remove(data);
    fs::create_directory(data);
    fs::permissions(data, fs::perms{0500});
    const bool mayWriteAnyway = static_cast<bool>(std::ofstream(data / "trial"));
    EXPECT_EQ(save(10), mayWriteAnyway ? 1U : 6U); // as root
    EXPECT_FALSE(rig.afterKey().empty());
    fs::permissions(data, fs::perms{0700});
}

// 127 outputs are as many as there can be; what a program sends to the 128th goes there.
TEST_F(Faults, AHundredPorts) {
    rig.outputs.resize(128);
    rig.inputs.resize(128);
    for (std::size_t i = 0; i < 128; ++i) {
        rig.outputs[i] = {{"Out " + std::to_string(i), "none", true}};
        rig.inputs[i] = {{"In " + std::to_string(i), "none", true}};
    }
    std::string layers;
    for (int i = 0; i < 128; ++i) {
        layers += "<Layer output=\"" + std::to_string(i) + "\"/>";
    }
    rig.after([&](QelMessageManager& backend) {
        backend.postSetMidiOutputPorts(rig.outputs);
        backend.postSetMidiInputPorts(rig.inputs);
        backend.postCall([&](QelIF& qel) {
            qel.setProgramText("<QelProgramFile><Program><Layers>" + layers + "</Layers></Program></QelProgramFile>");
        });
    });
    for (int input = 0; input < 128; ++input) {
        static_cast<void>(rig.afterMidi(0x90, 60, 100, input));
    }
    EXPECT_EQ(rig.player.sounding().size(), 128U);
    for (std::size_t i = 0; i < 64; ++i) {
        rig.outputs[i].enabled = false;
        rig.player.unplug(static_cast<int>(i));
    }
    rig.after([&](QelMessageManager& backend) { backend.postSetMidiOutputPorts(rig.outputs); });
    for (int input = 0; input < 128; ++input) {
        static_cast<void>(rig.afterMidi(0x80, 60, 0, input));
    }
    EXPECT_TRUE(rig.player.sounding().empty());
}

// All that a MIDI byte can be, undefined statuses, data bytes that are none and ports that are not there among them.
TEST_F(Faults, APeerSendsAnything) {
    for (int round = 0; round < 200; ++round) {
        rig.after([&](QelMessageManager& backend) {
            std::vector<QelMidiMessage> flood;
            for (int i = 0; i < 500; ++i) {
                flood.emplace_back(static_cast<MessageType>(any(0, 255)), any<std::int8_t>(-128, 127),
                                   any<std::int8_t>(-128, 127), any<std::int8_t>(-128, 127),
                                   any<std::int8_t>(-128, 127), any<std::int8_t>(-128, 127),
                                   any<std::int8_t>(-128, 127), Backend::noTicks);
            }
            backend.postProcessMidiInputEvents(std::move(flood));
        });
    }
    for (const std::string& line : rig.player.takeLines()) {
        EXPECT_EQ(line.find('-', 1), std::string::npos) << line;
    }
    rig.after([](QelMessageManager& backend) { backend.postResetQel(); });
    EXPECT_TRUE(rig.player.sounding().empty());
    EXPECT_EQ(rig.afterKey().empty(), false) << "it plays on";
}

} // namespace
