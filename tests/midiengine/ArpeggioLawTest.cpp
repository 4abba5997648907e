// Whatever is played on arpeggios and sequences and whatever changes meanwhile: each Note On that goes out is followed
// by exactly one Note Off at the same place, and when all keys are let go all falls silent.
#include "EngineRig.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace {

using Backend::Layers::Layer;
using Backend::Layers::LayerList;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

struct Kind {
    bool toggles = false;
    bool changes = true; // layers, thru, default output, zones
    bool breaks = true;  // resets, ports
};

class MachineRound final {
public:
    MachineRound(RandomCases& random, const Kind& kind) : random_(random), kind_(kind) { setLayers(); }

    void play(int steps) {
        for (int i = 0; i < steps && !testing::Test::HasFailure(); ++i) {
            step();
            check();
        }
        while (!held_.empty()) {
            release();
        }
        if (kind_.toggles) {
            breakOff("reset");
        }
        run(60); // longer than any beat and any step
        EXPECT_FALSE(rig_.engine.isBusy());
        EXPECT_EQ(rig_.engine.getStartTime(), Backend::noTicks);
        for (const auto& [place, count] : sounding_) {
            EXPECT_EQ(count, 0) << place;
        }
    }
    [[nodiscard]] const std::string& log() const { return log_; }

private:
    template <typename Number> Number any(Number lowest, Number highest) { return random_.number(lowest, highest); }
    [[nodiscard]] bool chance(int percent) { return any(1, 100) <= percent; }
    void say(const std::string& what) { log_ += what + "; "; }

    void run(int ticks) {
        say("wait " + std::to_string(ticks));
        for (int i = 0; i < ticks; ++i) {
            rig_.playTick();
        }
        check();
    }
    // The lines since the last call. What has no time was sent by a reset or a port that closes: they end each place
    // once, also what was kept back.
    void check() {
        for (const std::string& line : rig_.player.takeLines()) {
            std::istringstream words(line);
            std::string tick, output, status, note;
            words >> tick >> output >> status >> note;
            int& count = sounding_[output + " " + status.substr(1) + " " + note];
            const bool ofBreak = tick == "-";
            if (status[0] == '9') {
                ++count;
            } else if (status[0] == '8') {
                EXPECT_TRUE(count > 0 || ofBreak) << "nothing sounds that ends: " << line;
                count = ofBreak ? 0 : count - 1;
            }
        }
    }
    void breakOff(const std::string& step) {
        say(step);
        rig_.run(step);
        check();
    }

    [[nodiscard]] std::string someSteps() {
        std::string steps;
        for (int count = any(1, 4); count > 0; --count) {
            for (int notes = any(1, 3); notes > 0; --notes) {
                steps += chance(25) ? "-" : std::to_string(any(-30, 30));
                steps += chance(30) ? " V" + std::to_string(any(-140, 140)) : "";
                steps += chance(30) ? " L" + std::to_string(any(-1, 30)) : "";
                steps += notes > 1 ? "|" : "";
            }
            steps += count > 1 ? "," : "";
        }
        return steps;
    }
    [[nodiscard]] std::string someLayer() {
        static const std::vector<std::string> kinds{"Chord", "Up", "Down", "UpDown"};
        const auto flag = [&] { return chance(70) ? "\"true\"" : "\"false\""; };
        std::string text =
            "<Layer output=\"" + std::to_string(any(-1, 3)) + "\" channel=\"" + std::to_string(any(0, 1)) +
            "\" transpose=\"" + (chance(20) ? "64" : "+3") + "\"" + (chance(30) ? " minVelocity=\"40\"" : "") +
            (chance(20) ? " mono=\"true\"" : "") + (chance(10) ? " mute=\"true\"" : "") +
            (kind_.toggles && chance(50) ? " toggle=\"type" + std::to_string(any(1, 2)) + "\"" : "") + ">";
        const bool arpeggio = chance(70);
        if (arpeggio) {
            text += "<" + kinds[any<std::size_t>(0, 3)] + "Arpeggio beat=\"" + std::to_string(any(0, 12)) +
                    "\" length=\"" + std::to_string(any(0, 20)) + "\"/>";
        }
        if (!arpeggio || chance(50)) {
            text += "<SequenceSetting preset=\"" + someSteps() + "\" useNote=" + flag() + " useVelocity=" + flag() +
                    " useLength=" + flag() + "/>";
        }
        return text + "</Layer>";
    }
    void setLayers() {
        std::string layers;
        for (int count = any(1, 4); count > 0; --count) {
            layers += someLayer();
        }
        breakOff("layers " + layers);
    }

    void press() {
        const QelMidiMessage noteOn(MessageType::noteOn, any<std::int8_t>(50, 70), any<std::int8_t>(1, 127), -1, -1,
                                    any<std::int8_t>(-1, 1), any<std::int8_t>(-1, 1), Backend::noTicks);
        say("on " + std::to_string(noteOn.getD1()) + " " + std::to_string(noteOn.getD2()) +
            " zone=" + std::to_string(noteOn.getZone()) + " in=" + std::to_string(noteOn.getInput()));
        held_.push_back(noteOn);
        rig_.playTick({noteOn});
    }
    void release() {
        const std::size_t which = any<std::size_t>(0, held_.size() - 1);
        QelMidiMessage noteOff = held_[which];
        held_.erase(held_.begin() + static_cast<std::ptrdiff_t>(which));
        noteOff.setToNoteOff();
        say("off " + std::to_string(noteOff.getD1()));
        rig_.playTick({noteOff});
        check();
    }
    void step() {
        const int what = any(1, 100);
        if (what <= 35) {
            press();
        } else if (what <= 65) {
            if (!held_.empty()) {
                release();
            }
        } else if (what <= 80) {
            run(any(1, 30));
        } else if (what <= 92 && kind_.changes) {
            change();
        } else if (kind_.breaks) {
            const std::string port = std::to_string(any(0, 2));
            switch (any(0, 3)) {
            case 0:
                return breakOff("reset");
            case 1:
                return breakOff("output " + port + (chance(50) ? " on" : " off"));
            case 2:
                breakOff("unplug " + port); // whatever sounded there is gone with it
                std::erase_if(sounding_, [&](const auto& each) { return each.first.starts_with(port + " "); });
                return;
            default:
                return breakOff("plug " + port);
            }
        }
    }
    void change() {
        switch (any(0, 4)) {
        case 0:
            return setLayers();
        case 1:
            rig_.run(said(chance(50) ? "thru on" : "thru off"));
            break;
        case 2:
            rig_.run(said("default " + std::to_string(any(0, 2))));
            break;
        case 3:
            rig_.run(said("zones 0:" + std::to_string(any(-20, 20))));
            break;
        default:
            rig_.run(said("zone 0 " + std::to_string(any(-20, 20))));
        }
    }
    const std::string& said(const std::string& step) {
        say(step);
        return step;
    }

    RandomCases& random_;
    Kind kind_;
    EngineRig rig_;
    std::vector<QelMidiMessage> held_;
    std::map<std::string, int> sounding_; // by place: Note Ons without their Note Off
    std::string log_;
};

void playRounds(const Kind& kind, int rounds) {
    RandomCases random;
    for (int i = 0; i < rounds; ++i) {
        MachineRound round(random, kind);
        round.play(random.number(5, 80));
        ASSERT_FALSE(testing::Test::HasFailure()) << "round " << i << "\n" << round.log();
    }
}

TEST(ArpeggioLawTest, EachNoteOnHasItsNoteOff) {
    playRounds({.changes = false, .breaks = false}, 100);
}
TEST(ArpeggioLawTest, WhateverChangesMeanwhile) {
    playRounds({}, 200);
}
TEST(ArpeggioLawTest, WithToggles) {
    playRounds({.toggles = true}, 100);
}

// The key that comes back goes to another output than its note that still sounds; then that output is closed.
TEST(ArpeggioLawTest, WhatSoundsElsewhereEndsThereWhenAnOutputIsClosed) {
    EngineRig rig(R"(<Layer mono="true"><UpArpeggio beat="12" length="7"/></Layer>)");
    EXPECT_EQ(rig.play("on 70 9; on 69 9; wait 11; default 2; on 70 9; off 70; output 2 off; off 70; off 69; wait 20"),
              "0 0 90 70 9; 7 0 80 70 9; 12 0 90 69 9; 19 0 80 69 9");
    EXPECT_FALSE(rig.engine.isBusy());
}

// Layers that are exchanged while keys are held.

TEST(ArpeggioExchangeTest, AnArpeggioGoesOnOnItsBeats) {
    const std::string up = R"(<Layer><UpArpeggio beat="4" length="2"/></Layer>)";
    EngineRig rig(up);
    EXPECT_EQ(rig.play("with on 60 1; with on 64 1; on 67 1; wait 5"), // the second note plays
              "0 0 90 60 1; 2 0 80 60 1; 4 0 90 64 1");
    EXPECT_EQ(rig.play("layers " + up + R"(<Layer channel="1"/>)" + "; wait 9"),
              "- 0 80 64 100; 8 0 90 67 1; 10 0 80 67 1; 12 0 90 60 1; 14 0 80 60 1");
    EXPECT_EQ(rig.play("layers " + up + "; off 60; off 64; wait 3; off 67; on 60 1"),
              "16 0 90 64 1; 18 0 80 64 1; 20 0 90 67 1; 22 0 80 67 1; 23 0 90 60 1");
}

TEST(ArpeggioExchangeTest, ASequenceGoesOnWithItsNextStep) {
    const std::string chord =
        R"(<Layer><ChordArpeggio beat="4" length="2"/><SequenceSetting preset="0,1,2,3"/></Layer>)";
    EngineRig rig(chord);
    EXPECT_EQ(rig.play("on 60 1; wait 5; layers " + chord + "; wait 5"),
              "0 0 90 60 1; 2 0 80 60 1; 4 0 90 61 1; - 0 80 61 100; 8 0 90 62 1; 10 0 80 62 1");
}

TEST(ArpeggioExchangeTest, WhatNobodyTakesIsForgotten) {
    const std::string up = R"(<Layer><UpArpeggio beat="4" length="2"/></Layer>)";
    EngineRig rig(up);
    EXPECT_EQ(rig.play("on 60 1; layers <Layer/>; off 60 5; layers " + up + "; wait 9"),
              "0 0 90 60 1; - 0 80 60 100; 2 0 80 60 5");
    EXPECT_FALSE(rig.engine.isTickDependent());
}

TEST(ArpeggioExchangeTest, AKeyThatWasHeldBeforeStartsAnArpeggioThatComes) {
    EngineRig rig("<Layer/>", "1:12");
    EXPECT_EQ(
        rig.play(R"(on 60 7 zone=1; layers <Layer><UpArpeggio beat="4" length="2"/></Layer>; wait 5; off 60 zone=1)"),
        "0 0 90 72 7; - 0 80 72 100; 1 0 90 72 7; 3 0 80 72 7; 5 0 90 72 7; 7 0 80 72 7");
}

} // namespace
