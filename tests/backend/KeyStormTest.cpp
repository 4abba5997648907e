// Keys in any order, while all that keys depend on changes: when all are let go, nothing sounds.
#include "BackendRig.h"
#include "core/QelMessageManager.h"
#include "midiengine/MidiEngine.h"
#include "support/RandomCases.h"
#include "values/Key.h"
#include "values/Note.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using Backend::QelMessageManager;

constexpr std::array keyNames{"Q", "W", "Z", "Comma", "A", "K", "F2", "Space", "Numpad -"};
constexpr std::array modifierNames{"", "Shift ", "Control Alt "};
constexpr int presetCount = 3;
constexpr int programCount = 5;

class KeyStorm : public testing::Test {
protected:
    template <typename List> std::string anyOf(const List& list) {
        return list[random.number<std::size_t>(0, list.size() - 1)];
    }
    std::string anyNumber(int lowest, int highest) { return std::to_string(random.number(lowest, highest)); }
    bool oneIn(int times) { return random.number(1, times) == 1; }

    // What changes under the keys; resets and new layers end all notes at once, so they are the rarer ones.
    std::string anyChange() {
        switch (random.number(0, 11)) {
        case 0:
            return "<ChangeProgram type=\"" + anyNumber(0, programCount - 1) + "\"/>";
        case 1:
            return "<ChangeLayerMono type=\"all\" value=\"toggle\"/>";
        case 2:
            return "<ChangeLayerTranspose type=\"all\" value=\"+3\"/>";
        case 3:
        case 4:
            return "<LoadComputerInputPreset preset=\"" + anyNumber(0, presetCount - 1) + "\"/>";
        case 5:
        case 6:
            return "<SelectZone type=\"up\"/>";
        case 7:
            return "<ChangeDefaultMidiOutput type=\"up\"/>";
        default:
            return "<ChangeZoneTranspose type=\"all\" value=\"" + anyNumber(-30, 30) + "\"/>";
        }
    }

    std::string anyEntry() {
        const std::string begin = std::string("<Function keepSending=\"") + (oneIn(3) ? "true" : "false") + "\">";
        if (oneIn(3)) {
            const std::string controller = "<MidiControllerChange controller=\"1\" value=\"1\"/>";
            return begin + "<Down>" + (oneIn(4) ? anyChange() : controller) + "</Down>" +
                   (oneIn(2) ? "<Up>" + controller + "</Up>" : "") + "</Function>";
        }
        std::string data = oneIn(2) ? "" : " zone=\"" + anyNumber(0, 2) + "\"";
        data += oneIn(4) ? " output=\"" + anyNumber(0, 2) + "\"" : "";
        data += oneIn(4) ? " channel=\"" + anyNumber(0, 2) + "\"" : "";
        data += " note=\"" + Note(random.number(60, 63)).getName() + "\" velocity=\"100\"/>";
        return begin + "<Down><MidiNoteOn" + data + "</Down><Up><MidiNoteOff" + data + "</Up></Function>";
    }

    std::string anyKeyboard() {
        std::string text = std::string("<ComputerInput merge=\"") + (oneIn(3) ? "true" : "false") +
                           "\" useKeyUpMod=\"" + (oneIn(2) ? "true" : "false") + "\">";
        for (const char* key : keyNames) {
            for (const char* modifiers : modifierNames) {
                if (oneIn(4)) {
                    continue;
                }
                text += "<Key id=\"" + std::string(modifiers) + key + "\">";
                for (int i = random.number(0, 3); i > 0; --i) {
                    text += anyEntry();
                }
                text += "</Key>";
            }
        }
        return text + "</ComputerInput>";
    }

    std::string anyProgram() {
        std::string text = "<Program>\n<Layers>";
        for (int i = random.number(1, 3); i > 0; --i) {
            text += std::string("<Layer mono=\"") + (oneIn(3) ? "true" : "false") + "\" useNoteStack=\"" +
                    (oneIn(4) ? "false" : "true") + "\" channel=\"" + anyNumber(0, 1) + "\" output=\"" +
                    anyNumber(-1, 2) + "\" zone=\"" + anyNumber(-1, 1) + "\"/>";
        }
        text += "</Layers><Zones>";
        for (int i = 0; i < 3; ++i) {
            text += oneIn(3) ? "" : "<Zone id=\"" + std::to_string(i) + "\" transpose=\"" + anyNumber(-12, 12) + "\"/>";
        }
        return text + "</Zones>" + (oneIn(4) ? "" : anyKeyboard()) + "</Program>\n";
    }

    static Key keyOf(const std::string& name) { return Key(std::string_view(name)); }

    RandomCases random;
    BackendRig rig;
};

TEST_F(KeyStorm, EndsInSilence) {
    for (int preset = 0; preset < presetCount; ++preset) {
        rig.writeFile("Computer Input Presets/" + std::to_string(preset) + ".pst", anyKeyboard());
    }
    std::string bank = "<Bank>\n";
    for (int i = 0; i < programCount; ++i) {
        bank += anyProgram();
    }
    const std::string path = rig.writeFile("storm.bnk", bank + "</Bank>\n");
    rig.after([&](QelMessageManager& backend) { backend.postLoadBank(path); });
    std::size_t notes = 0;
    for (int round = 0; round < 25; ++round) {
        for (int batch = 0; batch < 40; ++batch) {
            const std::string played = rig.after([&](QelMessageManager& backend) {
                for (int i = 0; i < 10; ++i) {
                    const Key key = keyOf(anyOf(modifierNames) + anyOf(keyNames));
                    switch (random.number(0, 9)) {
                    case 0:
                        backend.postExecuteFunction(anyChange());
                        break;
                    case 1:
                    case 2:
                    case 3:
                        backend.postKeyUp(key);
                        break;
                    default:
                        backend.postKeyDown(key, oneIn(3));
                        break;
                    }
                }
            });
            for (std::size_t at = played.find(" 9"); at != std::string::npos; at = played.find(" 9", at + 1)) {
                ++notes;
            }
        }
        rig.after([&](QelMessageManager& backend) {
            for (const char* name : keyNames) {
                backend.postKeyUp(keyOf(anyOf(modifierNames) + name));
            }
        });
        ASSERT_TRUE(rig.player.sounding().empty())
            << "round " << round << ", note " << std::get<2>(*rig.player.sounding().begin());
        ASSERT_EQ(rig.qel->getMidiEngine().soundingNotes(), 0) << "round " << round;
    }
    EXPECT_GT(notes, 100U); // else the storm was none
    EXPECT_TRUE(rig.takeFaults().empty());
}

} // namespace
