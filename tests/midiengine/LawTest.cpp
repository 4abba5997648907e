// Whatever is played and whatever changes meanwhile: a note that was started is ended where it was started.
#include "EngineRig.h"
#include "midiengine/EngineTap.h"
#include "support/RandomCases.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

namespace {

using Backend::Layers::Layer;
using Backend::Layers::LayerList;
using Backend::MidiEngine::EngineTap;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;
using TestSupport::Sound;

// What a round may contain.
struct Kind {
    bool toggles = true;  // and mono
    bool keepAll = false; // every layer keeps held notes, and nothing goes the direct road
    bool strays = true;   // Note Offs of nobody, the same key twice, thru off, exchanged zones, closing inputs
    bool resets = true;   // and new layers
    bool ports = true;
};

// A key that is down: how it is addressed, and, in rounds that can tell, where it must sound.
struct Press {
    QelMidiMessage noteOn;
    std::vector<Sound> sounds;
};

// Counts Note Ons and Note Offs at each place, kept back or not.
class Balance final : public EngineTap {
public:
    void passed(const QelMidiMessage& message, bool) override {
        if (message.isNote()) {
            balance[{message.getOutput(), message.getChannel(), message.getD1()}] += message.isNoteOn() ? 1 : -1;
        }
    }
    std::map<Sound, int> balance;
};

class Round final {
public:
    Round(RandomCases& random, const Kind& kind) : random_(random), kind_(kind) {
        setLayers();
        setZones();
        rig_.engine.addTap(balance_);
    }

    void play(int steps) {
        for (int i = 0; i < steps && !testing::Test::HasFailure(); ++i) {
            step();
            checkHeld();
        }
        while (!held_.empty()) {
            release(pick(held_));
            checkHeld();
        }
        if (kind_.toggles) {
            rig_.engine.sendReset();
        }
        checkLines();
        EXPECT_EQ(rig_.player.sounding(), std::set<Sound>{});
        EXPECT_EQ(rig_.engine.soundingNotes(), 0);
        if (!kind_.toggles && !kind_.resets && !kind_.ports) {
            for (const auto& [place, balance] : balance_.balance) {
                EXPECT_LE(balance, 0) << "output " << std::get<0>(place) << " channel " << std::get<1>(place)
                                      << " note " << std::get<2>(place);
            }
        }
    }
    [[nodiscard]] const std::string& log() const { return log_; }

private:
    template <typename Number> Number any(Number lowest, Number highest) { return random_.number(lowest, highest); }
    bool chance(int percent) { return any(1, 100) <= percent; }
    std::size_t pick(const std::vector<Press>& presses) { return any<std::size_t>(0, presses.size() - 1); }
    std::int8_t small(int lowest, int highest) { return static_cast<std::int8_t>(any(lowest, highest)); }
    void say(const std::string& what) { log_ += what + "\n"; }

    void setLayers() {
        layers_.assign(any<std::size_t>(0, 5), {});
        for (Layer& layer : layers_) {
            layer.mute = chance(10);
            layer.solo = chance(5);
            layer.mono = kind_.toggles && chance(30);
            if (kind_.toggles && chance(30)) {
                layer.toggle = NoteToggle(chance(50) ? NoteToggle::State::type1 : NoteToggle::State::type2);
            }
            layer.useNoteStack = kind_.keepAll || chance(70);
            layer.minNote = Note(chance(70) ? 0 : any(0, 80));
            layer.maxNote = Note(chance(70) ? 127 : any(40, 127));
            layer.minVelocity = chance(60) ? std::int8_t{0} : small(0, 80);
            layer.maxVelocity = chance(60) ? std::int8_t{127} : small(40, 127);
            layer.zone = chance(60) ? std::int8_t{-1} : small(0, 2);
            layer.output = chance(60) ? std::int8_t{-1} : small(0, 3);
            layer.channel = small(0, 2);
            if (chance(60)) {
                layer.transpose =
                    chance(80) ? RelativeFixedValue::relative(any(-30, 30)) : RelativeFixedValue::fixed(60);
            }
            layer.key = Note(chance(80) ? -1 : any(0, 11));
            layer.velocity = RelativeFixedValue::relative(chance(60) ? 0 : any(-127, 127));
        }
        rig_.engine.setLayerList(layers_);
    }
    void setZones() {
        std::string zones;
        for (int id = 0; id < 3; ++id) {
            if (chance(70)) {
                zones += (zones.empty() ? "" : " ") + std::to_string(id) + ":" + std::to_string(any(-12, 12));
            }
        }
        zones_ = zonesOf(zones);
        rig_.engine.setZoneMap(zones_);
        say("zones " + zones);
    }

    QelMidiMessage someEvent(MessageType type) {
        const bool direct = !kind_.keepAll && chance(25);
        return {type,
                small(36, kind_.keepAll ? 84 : 45),
                small(1, 127),
                direct && chance(60) ? small(0, 2) : std::int8_t{-1},
                direct && chance(60) ? small(0, 3) : std::int8_t{-1},
                small(-1, 2),
                small(-1, 1),
                Backend::noTicks};
    }

    void press() {
        const QelMidiMessage noteOn = someEvent(MessageType::noteOn);
        const auto sameKey = [&noteOn](const Press& other) {
            return other.noteOn.getInput() == noteOn.getInput() && other.noteOn.getZone() == noteOn.getZone() &&
                   other.noteOn.getD1() == noteOn.getD1();
        };
        const bool closed = noteOn.getInput() >= 0 && !rig_.inputs[static_cast<std::size_t>(noteOn.getInput())].enabled;
        if (closed || (!kind_.strays && std::any_of(held_.begin(), held_.end(), sameKey))) {
            return;
        }
        held_.push_back({noteOn, soundsOf(noteOn)});
        playOne(noteOn);
    }
    void release(std::size_t which) {
        QelMidiMessage noteOff = held_[which].noteOn;
        noteOff.setToNoteOff();
        noteOff.setD2(small(0, 127));
        held_.erase(held_.begin() + static_cast<std::ptrdiff_t>(which));
        playOne(noteOff);
    }
    void playOne(const QelMidiMessage& message) {
        say(TestSupport::lineOf(message) + " in=" + std::to_string(message.getInput()) +
            " zone=" + std::to_string(message.getZone()) + (message.isDefaultChannel() ? " default" : ""));
        rig_.playTick({message});
    }

    // Where a note must sound that is played through the layers now.
    std::vector<Sound> soundsOf(const QelMidiMessage& noteOn) {
        std::vector<Sound> sounds;
        int note = noteOn.getD1();
        if (const Backend::Zones::Zone* zone = zones_.find(noteOn.getZone())) {
            note += zone->transpose;
        }
        const bool anySolo = std::any_of(layers_.begin(), layers_.end(), [](const Layer& each) { return each.solo; });
        for (const Layer& layer : layers_) {
            const int output = layer.output < 0 ? rig_.engine.getDefaultMidiOutput() : layer.output;
            const bool open = output < 3 && rig_.outputs[static_cast<std::size_t>(output)].enabled;
            const bool inZone = layer.zone < 0 || noteOn.getZone() < 0 || layer.zone == noteOn.getZone();
            if (open && inZone && (anySolo ? layer.solo : !layer.mute) && note >= layer.minNote.getNumber() &&
                note <= layer.maxNote.getNumber() && noteOn.getD2() >= layer.minVelocity &&
                noteOn.getD2() <= layer.maxVelocity) {
                sounds.emplace_back(output, layer.channel, layer.transform(static_cast<std::int8_t>(note)));
            }
        }
        return sounds;
    }
    void forgetSounds(int output) {
        for (Press& press : held_) {
            std::erase_if(press.sounds, [output](const Sound& sound) { return std::get<0>(sound) == output; });
        }
    }

    void step() {
        const int what = any(1, 100);
        if (what <= 45) {
            press();
        } else if (what <= 80) {
            if (!held_.empty()) {
                release(pick(held_));
            }
        } else if (what <= 83) {
            playOne(someEvent(MessageType::controllerChange));
        } else if (what <= 86) {
            const int output = any(0, 3);
            say("default " + std::to_string(output));
            rig_.engine.setDefaultMidiOutput(output);
        } else if (what <= 90 && kind_.strays) {
            changeOrStray();
        } else if (what <= 94 && kind_.resets) {
            reset();
        } else if (kind_.ports) {
            changePort();
        }
    }
    void changeOrStray() {
        switch (any(0, 4)) {
        case 0:
            playOne(someEvent(MessageType::noteOff));
            break;
        case 1: {
            const bool on = chance(60);
            say(on ? "thru on" : "thru off");
            rig_.engine.setMidiThru(on);
            break;
        }
        case 2:
            setZones();
            break;
        case 3: {
            const Backend::Zones::Zone zone{small(0, 2), small(-40, 40), {}, {}, false};
            say("zone " + std::to_string(zone.id) + " " + std::to_string(zone.transpose));
            rig_.engine.setZone(zone);
            break;
        }
        default: {
            const int input = any(0, 1);
            const bool on = chance(50);
            say("input " + std::to_string(input) + (on ? " on" : " off"));
            rig_.openInput(input, on);
            if (!on) {
                std::erase_if(held_, [input](const Press& press) { return press.noteOn.getInput() == input; });
            }
        }
        }
    }
    void reset() {
        if (chance(50)) {
            say("reset");
            rig_.engine.sendReset();
        }
        if (chance(70)) { // usually after a reset
            say("layers");
            setLayers();
        }
        for (Press& press : held_) {
            press.sounds.clear();
        }
    }
    void changePort() {
        const int port = any(0, 2);
        switch (any(0, 2)) {
        case 0:
            say("output off " + std::to_string(port));
            rig_.openOutput(port, false);
            break;
        case 1:
            say("unplug " + std::to_string(port));
            rig_.plug(port, false);
            break;
        default:
            say("plug " + std::to_string(port));
            rig_.plug(port, true);
            return;
        }
        forgetSounds(port);
    }

    // Each held key sounds wherever it began, and nothing else does.
    void checkHeld() {
        checkLines();
        if (!kind_.keepAll || kind_.toggles || kind_.strays || kind_.resets) {
            return;
        }
        std::set<Sound> expected;
        for (const Press& press : held_) {
            expected.insert(press.sounds.begin(), press.sounds.end());
        }
        EXPECT_EQ(rig_.player.sounding(), expected);
    }
    // Nothing goes to a port that is not open (but its own Note Offs as it closes), and what goes out is MIDI.
    void checkLines() {
        for (const std::string& line : rig_.player.takeLines()) {
            const auto output = static_cast<std::size_t>(line[line.find(' ') + 1] - '0');
            EXPECT_TRUE(line.starts_with("-") || (output < 3 && rig_.outputs[output].enabled)) << line;
            EXPECT_EQ(line.find('-', 1), std::string::npos) << line;
        }
    }

    RandomCases& random_;
    Kind kind_;
    EngineRig rig_;
    Balance balance_;
    LayerList layers_;
    Backend::Zones::ZoneMap zones_;
    std::vector<Press> held_;
    std::string log_;
};

void playRounds(const Kind& kind, int rounds) {
    RandomCases random;
    for (int i = 0; i < rounds; ++i) {
        Round round(random, kind);
        round.play(random.number(5, 120));
        ASSERT_FALSE(testing::Test::HasFailure()) << "round " << i << "\n" << round.log();
    }
}

TEST(LawTest, WhenAllKeysAreLetGoAllIsSilent) {
    playRounds({.toggles = false}, 250);
}

TEST(LawTest, WithTogglesAfterAReset) {
    playRounds({}, 250);
}

TEST(LawTest, EachNoteOnHasItsNoteOff) {
    playRounds({.toggles = false, .resets = false, .ports = false}, 200);
}

TEST(LawTest, WhatIsHeldSoundsAndNothingElse) {
    playRounds({.toggles = false, .keepAll = true, .strays = false, .resets = false}, 250);
}

} // namespace
