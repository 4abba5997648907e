// Programs, banks and presets as files: what is saved is what was there.
#include "BackendRig.h"
#include "backend/LayerMessageManager.h"
#include "core/QelMessageManager.h"
#include "platform/Threads.h"
#include "platform/WindowMessages.h"
#include "support/FileContent.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Backend::QelIF;
using Backend::QelMessageManager;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Kind = SelectType::Kind;

constexpr const char* declaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

// All seven sections, two of them of a kind that is not known.
constexpr const char* wholeProgram =
    R"(<Program name="Whole" tempo="99" tempoSource="2" color="red &amp; &#10;blue">
	<Joystick merge="false"><Axis joystick="1" axis="X"><Function midiEvent="Pitch Bend" min="0" max="16383"/></Axis>
	<Button joystick="0" button="3"><Function keepSending="false"><Down><ResetQel/></Down></Function></Button></Joystick>
	<ComputerInput merge="false" useKeyUpMod="true"><Key id="Shift A" global="false"><Function keepSending="true">
	<Down><ChangeTempo value="+5"/></Down><Up><LoadControlPreset preset="&lt;a&gt; &amp; &quot;b&quot;"/></Up></Function></Key></ComputerInput>
	<Controls merge="false"><Control cell="1,2" name="&lt;Ü&gt;" type="knob" value="5"><Function midiEvent="Controller Change,7"/></Control></Controls>
	<Layers merge="false"><Layer channel="3" transpose="+7" toggle="type2" key="C#" compress="1_2"/><Layer zone="1"/></Layers>
	<Zones merge="false"><Zone id="4" transpose="-3"/></Zones>
	<Future a="1">some text<Deep b="&lt;"/></Future>
</Program>)";

class ProgramFiles : public testing::Test {
protected:
    void post(const std::function<void(QelMessageManager&)>& what) { rig.after(what); }
    std::string programText() {
        std::string text;
        rig.afterDirect([&](QelIF& qel) { text = qel.getProgramText(); });
        return text;
    }
    void setProgramText(const std::string& text) {
        rig.afterDirect([&](QelIF& qel) { qel.setProgramText(text); });
    }
    void loadProgram(const std::string& program) {
        const std::string path =
            rig.writeFile("load.prg", declaration + ("<ProgramFile>\n" + program) + "</ProgramFile>");
        post([&](QelMessageManager& backend) { backend.postLoadProgram(path); });
    }
    std::string loadBank(const std::string& text) {
        const std::string path = rig.writeFile("bank.bnk", text);
        post([&](QelMessageManager& backend) { backend.postLoadBank(path); });
        return path;
    }
    static std::string contentOf(const std::string& path) {
        return TestSupport::contentOf(std::filesystem::path(std::u8string(path.begin(), path.end())));
    }
    // The name of the program in that slot.
    std::string nameAt(int slot) {
        post([&](QelMessageManager& backend) {
            backend.postChangeProgram(SelectType::fixed(slot));
            backend.postPublishStatus();
        });
        return rig.qel->getStatus().program;
    }

    BackendRig rig;
};

// Programs.

TEST_F(ProgramFiles, WhatIsSavedLoadsAsWhatItWas) {
    loadProgram(wholeProgram);
    const std::string text = programText();
    EXPECT_THAT(text, StartsWith(declaration + std::string("<QelProgramFile>\n<Program name=\"Whole\" tempo=\"99\" "
                                                           "tempoSource=\"2\" color=\"red &amp; &#10;blue\">\n")));
    EXPECT_THAT(text, HasSubstr("\t<Future a=\"1\">some text\n\t\t<Deep b=\"&lt;\"/>\n\t</Future>\n</Program>\n"));
    EXPECT_THAT(text, HasSubstr("<LoadControlPreset preset=\"&lt;a&gt; &amp; &quot;b&quot;\"/>"));
    EXPECT_THAT(text, HasSubstr("channel=\"3\" transpose=\"+7\" key=\"C#\""));
    EXPECT_THAT(text, HasSubstr("<Zone id=\"4\" transpose=\"-3\"/>"));
    const std::string path = rig.writeFile("saved.prg", "old");
    post([&](QelMessageManager& backend) { backend.postSaveToProgram(path, nullptr); });
    loadProgram("<Program/>");
    EXPECT_THAT(programText(), Not(HasSubstr("Future")));
    post([&](QelMessageManager& backend) { backend.postLoadProgram(path); });
    EXPECT_EQ(programText(), text);
    setProgramText("<QelProgramFile><Program/></QelProgramFile>");
    setProgramText(text);
    EXPECT_EQ(programText(), text);
    EXPECT_THAT(rig.takeFaults(), ElementsAre());
    setProgramText("<ProgramFile><Program/></ProgramFile>");
    EXPECT_THAT(rig.takeFaults(),
                ElementsAre("program text:1: the root element is <ProgramFile>, not <QelProgramFile>"));
    EXPECT_EQ(programText(), text);
}

TEST_F(ProgramFiles, AnyNameComesBack) {
    for (const char* name : {"<&>'\"", "]]>", "&amp;", "<Program name=\"x\">", "<!--", "Übung № 7 \xF0\x9F\x8E\xB9",
                             " ", "", "  two  blanks  ", "C:\\Banks\\1"}) {
        loadBank("<Bank>\n<Program name=\"a\"/>\n<Program name=\"b\"/>\n</Bank>\n");
        post([&](QelMessageManager& backend) {
            backend.postChangeProgramName(name);
            backend.postSaveToCurrentBank(0, nullptr);
        });
        EXPECT_EQ(nameAt(1), "b");
        EXPECT_EQ(nameAt(0), name);
    }
    loadBank("<Bank>\n<Program name=\"a&#10;b&#9;c\"/>\n<Program/>\n</Bank>\n"); // others may write such names
    post([&](QelMessageManager& backend) { backend.postSaveToCurrentBank(0, nullptr); });
    nameAt(1);
    EXPECT_EQ(nameAt(0), "a\nb\tc");
    for (const auto& [given, kept] : {std::pair{"a\nb\tc\x01", "a b c "}, std::pair{"\xFF\xC3", "  "}}) {
        post([&, name = given](QelMessageManager& backend) {
            backend.postChangeProgramName(name);
            backend.postSaveToCurrentBank(0, nullptr);
        });
        nameAt(1);
        EXPECT_EQ(nameAt(0), kept);
    }
    EXPECT_THAT(rig.takeFaults(), ElementsAre());
}

TEST_F(ProgramFiles, ASectionThatEqualsItsPresetIsStoredAsItsName) {
    rig.writeFile("Layer Presets/Two.pst", "<Layers><Layer channel=\"1\"/><Layer channel=\"2\"/></Layers>");
    rig.writeFile("Joystick Presets/Reset.pst",
                  "<Joystick><Button joystick=\"0\" "
                  "button=\"1\"><Function><Down><ResetQel/></Down></Function></Button></Joystick>");
    const auto saved = [this] {
        const std::string path = rig.writeFile("saved.prg", "");
        post([&](QelMessageManager& backend) { backend.postSaveToProgram(path, nullptr); });
        return contentOf(path);
    };
    loadProgram(
        R"(<Program><Layers preset="Two"/><Joystick preset="Reset"/><Controls preset="000 - Default"/></Program>)");
    EXPECT_EQ(rig.afterKey(), "0 91 60 100; 0 92 60 100; 0 81 60 64; 0 82 60 64");
    EXPECT_THAT(saved(), HasSubstr("\t<Layers preset=\"Two\" merge=\"false\">\n\t</Layers>\n"));
    EXPECT_THAT(saved(), HasSubstr("\t<Joystick preset=\"Reset\" merge=\"false\">\n\t</Joystick>\n"));
    EXPECT_THAT(saved(), HasSubstr("\t<Controls preset=\"000 - Default\" merge=\"false\">\n\t</Controls>\n"));
    EXPECT_THAT(programText(), HasSubstr("<Layer mute=")); // by itself it needs no presets
    rig.afterDirect(
        [](QelIF& qel) { qel.changeLayerTranspose(SelectType(Kind::all), RelativeFixedValue::relative(1)); });
    EXPECT_THAT(saved(), Not(HasSubstr("preset=\"Two\"")));
    rig.afterDirect(
        [](QelIF& qel) { qel.changeLayerTranspose(SelectType(Kind::all), RelativeFixedValue::relative(-1)); });
    EXPECT_THAT(saved(), HasSubstr("preset=\"Two\""));
    rig.writeFile("Layer Presets/Two.pst", "<Layers><Layer channel=\"1\"/></Layers>");
    EXPECT_THAT(saved(), HasSubstr("channel=\"2\"")); // the preset has become another

    // A preset that is not there: the default, and the name as long as it says all.
    loadProgram(R"(<Program><Layers preset="Gone"/></Program>)");
    EXPECT_EQ(rig.afterKey(), "0 90 60 100; 0 80 60 64");
    EXPECT_THAT(saved(), HasSubstr("preset=\"Gone\""));
    loadProgram(R"(<Program><Layers preset="Gone"><Layer channel="5"/></Layers></Program>)");
    EXPECT_EQ(rig.afterKey(), "0 90 60 100; 0 95 60 100; 0 80 60 64; 0 85 60 64");
    EXPECT_THAT(saved(), HasSubstr("channel=\"5\""));
    EXPECT_THAT(rig.takeFaults(), ElementsAre());
}

TEST_F(ProgramFiles, LayersMergeAndLoadByName) {
    loadProgram(R"(<Program><Layers><Layer channel="1"/></Layers></Program>)");
    loadProgram(R"(<Program><Layers merge="true"><Layer channel="2"/></Layers></Program>)");
    EXPECT_EQ(rig.afterMidi(0xB0, 7, 1), "0 B1 7 1; 0 B2 7 1");
    rig.writeFile("Layer Presets/Three.pst", "<Layers merge=\"true\"><Layer channel=\"3\"/></Layers>");
    rig.afterDirect([](QelIF& qel) { qel.loadLayerPreset("Three"); });
    EXPECT_EQ(rig.afterMidi(0xB0, 7, 1), "0 B1 7 1; 0 B2 7 1; 0 B3 7 1");
    rig.afterDirect([](QelIF& qel) { qel.loadLayerPreset("../Three"); });
    EXPECT_THAT(rig.takeFaults(), ElementsAre("Layer Presets: there is no preset \"../Three\""));
    rig.afterDirect([](QelIF& qel) { qel.loadLayerPreset("000 - Default"); });
    EXPECT_EQ(rig.afterMidi(0xB0, 7, 1), "0 B0 7 1");
}

TEST_F(ProgramFiles, LayerPresetsAreSavedWholeOrInPart) {
    loadProgram(R"(<Program><Layers><Layer channel="1"/><Layer channel="2"/><Layer channel="3"/></Layers></Program>)");
    Backend::Layers::LayerMessageManager& layers = rig.qel->getLayerMessageManager();
    const std::string part = rig.writeFile("Layer Presets/Part.pst", "");
    post([&](QelMessageManager&) {
        layers.postSavePreset("Part", {2, 0, 7});
        layers.postSavePreset("Whole", {});
        layers.postStorePreset("Other", Backend::Layers::LayerList(2));
        layers.postSavePreset("a/b", {});
    });
    EXPECT_THAT(contentOf(part), testing::AllOf(HasSubstr("<Layers merge=\"true\">\n\t<Layer"),
                                                HasSubstr("channel=\"3\""), Not(HasSubstr("channel=\"2\""))));
    EXPECT_LT(contentOf(part).find("channel=\"3\""), contentOf(part).find("channel=\"1\""));
    const std::string saved = rig.writeFile("saved.prg", "");
    post([&](QelMessageManager& backend) { backend.postSaveToProgram(saved, nullptr); });
    EXPECT_THAT(contentOf(saved), HasSubstr("preset=\"Whole\""));
    post([&](QelMessageManager&) { layers.postLoadPreset("Part"); }); // on top of the three
    EXPECT_EQ(rig.afterMidi(0xC0, 7, 0), "0 C1 7; 0 C2 7; 0 C3 7");
    post([&](QelMessageManager&) { layers.postLoadPreset("Other"); });
    EXPECT_EQ(rig.afterMidi(0xC0, 7, 0), "0 C0 7");
    EXPECT_THAT(rig.takeFaults(), ElementsAre("Layer Presets: \"a/b\" cannot be the name of a preset"));
    post([&](QelMessageManager&) {
        layers.postDeletePreset("Other");
        layers.postLoadPreset("Other");
    });
    EXPECT_THAT(rig.takeFaults(), ElementsAre("Layer Presets: there is no preset \"Other\""));
}

// Banks.

TEST_F(ProgramFiles, SavingIntoABankLeavesTheOthersAsTheyAre) {
    const std::string path =
        loadBank("<Bank>\r\n  <Program\r\n   name=\"a\"/>\r\n<!-- <Program> -->\r\n"
                 "<Program name=\"b\"><Future>\r\n 1 </Future></Program><Program name=\"c\"/>\r\n</Bank>");
    post([&](QelMessageManager& backend) { backend.postChangeProgramName("new"); });
    post([&](QelMessageManager& backend) { backend.postSaveToCurrentBank(2, nullptr); });
    const std::string text = contentOf(path);
    EXPECT_THAT(
        text,
        StartsWith("<Bank>\r\n  <Program\r\n   name=\"a\"/>\r\n<!-- <Program> -->\r\n"
                   "<Program name=\"b\"><Future>\r\n 1 </Future></Program>\r\n<Program name=\"new\" tempo=\"120\" "
                   "tempoSource=\"0\">\r\n\t<"));
    EXPECT_THAT(text, testing::EndsWith("\r\n</Program>\r\n</Bank>"));
    EXPECT_EQ(nameAt(1), "b");
    EXPECT_EQ(nameAt(2), "new");
    EXPECT_EQ(nameAt(0), "a"); // as it was saved, not as it was renamed
    EXPECT_THAT(rig.takeFaults(), ElementsAre());
}

TEST_F(ProgramFiles, TheFileIsTakenAsItIsNow) {
    const std::string path = loadBank("<Bank><Program name=\"a\"/><Program name=\"b\"/></Bank>");
    rig.writeFile("bank.bnk", "<Bank><Program name=\"a\"/><Program name=\"other\"/><Program name=\"third\"/></Bank>");
    post([](QelMessageManager& backend) { backend.postSaveToCurrentBank(0, nullptr); });
    EXPECT_EQ(nameAt(1), "other");
    EXPECT_EQ(nameAt(2), "third");
    const std::string broken = "<Bank><Program name=\"a\"/>\n<Program name=\"other\">\n</Bank>";
    rig.writeFile("bank.bnk", broken);
    post([](QelMessageManager& backend) { backend.postSaveToCurrentBank(0, nullptr); });
    post([](QelMessageManager& backend) { backend.postChangeBankSize(2, nullptr); });
    EXPECT_EQ(contentOf(path), broken);
    EXPECT_THAT(rig.takeFaults(), ElementsAre(StartsWith("bank.bnk:3: "), StartsWith("bank.bnk:3: ")));
    std::filesystem::remove(path);
    post([](QelMessageManager& backend) { backend.postSaveToCurrentBank(-1, nullptr); });
    EXPECT_TRUE(rig.takeFaults().empty());
    EXPECT_FALSE(std::filesystem::exists(path)) << "there is no such slot";
}

// The file, its folder, or the drive with both: nothing that was in the bank is lost.
TEST_F(ProgramFiles, ABankThatWasRemovedIsMadeAgain) {
    namespace fs = std::filesystem;
    const std::string bank =
        rig.writeFile("Stick/Mine/bank.bnk", R"(<Bank><Program name="a"/><Program name="b"/></Bank>)");
    const fs::path folder = fs::path(bank).parent_path();
    post([&](QelMessageManager& backend) { backend.postLoadBank(bank); });
    const auto save = [&](const std::string& name) {
        post([&](QelMessageManager& backend) {
            backend.postChangeProgramName(name);
            backend.postSaveToCurrentBank(1, {});
        });
        return rig.takeFaults().size();
    };
    for (const fs::path& removed : {fs::path(bank), folder}) {
        fs::remove_all(removed);
        EXPECT_EQ(save("c"), 0U) << removed;
        EXPECT_NE(contentOf(bank).find("name=\"a\""), std::string::npos) << contentOf(bank);
        EXPECT_NE(contentOf(bank).find("name=\"c\""), std::string::npos) << contentOf(bank);
        fs::remove_all(removed);
        post([](QelMessageManager& backend) { backend.postChangeBankSize(3, {}); });
        post([](QelMessageManager& backend) { backend.postChangeBankSize(2, {}); });
        EXPECT_EQ(rig.takeFaults().size(), 0U);
        EXPECT_NE(contentOf(bank).find("name=\"c\""), std::string::npos) << contentOf(bank);
    }
    fs::remove_all(folder.parent_path());
    EXPECT_EQ(save("d"), 1U);
    const std::string elsewhere = rig.writeFile("elsewhere.bnk", "");
    post([&](QelMessageManager& backend) { backend.postSaveToBank(elsewhere, {}); });
    EXPECT_EQ(rig.takeFaults().size(), 0U);
    EXPECT_NE(contentOf(elsewhere).find("name=\"d\""), std::string::npos) << contentOf(elsewhere);
    EXPECT_NE(contentOf(elsewhere).find("name=\"c\""), std::string::npos) << contentOf(elsewhere);
}

TEST_F(ProgramFiles, TwoProgramsThatSaveIntoOneBankAtOnceLoseNothing) {
    constexpr int slots = 8;
    std::string text;
    for (int slot = 0; slot < slots; ++slot) {
        text += "<Program name=\"empty\"/>";
    }
    const std::string bank = loadBank("<Bank>" + text + "</Bank>");
    const auto saveAll = [&bank](BackendRig& at, int firstSlot, const std::string& who) {
        at.after([&](QelMessageManager& backend) { backend.postLoadBank(bank); });
        for (int turn = 0; turn < 40; ++turn) {
            at.after([&](QelMessageManager& backend) {
                backend.postChangeProgramName(who + std::to_string(turn));
                backend.postSaveToCurrentBank(firstSlot + turn * 2 % slots, {});
            });
        }
    };
    BackendRig other;
    Platform::Thread beside([&] { saveAll(other, 1, "other "); });
    beside.resume();
    saveAll(rig, 0, "one ");
    beside.join();
    EXPECT_TRUE(rig.takeFaults().empty());
    EXPECT_TRUE(other.takeFaults().empty());
    const std::string saved = contentOf(bank);
    for (int slot = 0; slot < slots; ++slot) {
        const std::string name = (slot % 2 == 0 ? "one " : "other ") + std::to_string(36 + slot / 2);
        EXPECT_NE(saved.find("\"" + name + "\""), std::string::npos) << name << '\n' << saved;
    }
}

TEST_F(ProgramFiles, ABankIsSavedUnderAnotherName) {
    const std::string path = loadBank("<Bank><Program name=\"a\"/><Program name=\"b\"/></Bank>");
    nameAt(1);
    const std::string other = rig.writeFile("Other Folder/\xC3\x9C.bnk", "old");
    post([&](QelMessageManager& backend) {
        backend.postChangeProgramName("new");
        backend.postSaveToBank(other, nullptr);
    });
    EXPECT_EQ(contentOf(path), "<Bank><Program name=\"a\"/><Program name=\"b\"/></Bank>");
    post([&](QelMessageManager& backend) { backend.postLoadBank(other); });
    EXPECT_EQ(nameAt(1), "new");
    post([&](QelMessageManager& backend) { backend.postSaveToBank("/no such folder/x.bnk", nullptr); });
    EXPECT_THAT(rig.takeFaults(), ElementsAre(StartsWith("/no such folder/x.bnk: ")));
}

TEST_F(ProgramFiles, ChangingTheSizeKeepsToTheSlotsThereAre) {
    const std::string path =
        loadBank("<Bank>\n<Program name=\"a\"/>\n<Program name=\"b\"/>\n<Program name=\"c\"/>\n</Bank>\n");
    nameAt(2);
    const auto resize = [&](int size) {
        post([&](QelMessageManager& backend) {
            backend.postChangeBankSize(size, nullptr);
            backend.postPublishStatus();
        });
        return rig.qel->getStatus().program;
    };
    EXPECT_EQ(resize(3), "c");
    EXPECT_EQ(resize(0), "c");
    EXPECT_EQ(resize(-1), "c");
    EXPECT_EQ(resize(2), "b");
    EXPECT_EQ(contentOf(path), "<Bank>\n<Program name=\"a\"/>\n<Program name=\"b\"/>\n</Bank>\n");
    EXPECT_EQ(resize(4), "b");
    EXPECT_EQ(nameAt(3), "Empty");
    EXPECT_EQ(nameAt(4), "Empty"); // no such slot
    EXPECT_EQ(rig.afterKey(), "0 90 60 100; 0 80 60 64");
    EXPECT_THAT(rig.takeFaults(), ElementsAre());
}

TEST_F(ProgramFiles, TheWindowIsToldWhenABankHasBeenSaved) {
    std::vector<std::uint32_t> told;
    const Platform::WindowHandle window =
        Platform::createWindowEndpoint([&](const Platform::ThreadMessage& message) { told.push_back(message.id); });
    const std::string path = loadBank("<Bank><Program/></Bank>");
    post([&](QelMessageManager& backend) {
        backend.postSaveToCurrentBank(0, window);
        backend.postSaveToBank(path, window);
        backend.postSaveToCurrentBank(9, window);
        backend.postSaveToCurrentBank(-1, window);
    });
    EXPECT_TRUE(Platform::dispatchWindowMessages());
    EXPECT_THAT(told, ElementsAre(0x8000 + 114, 0x8000 + 114));
    EXPECT_THAT(rig.takeFaults(), ElementsAre("bank.bnk: there is no slot 9, the bank has 1 programs"));
    Platform::destroyWindowEndpoint(window);
}

} // namespace
