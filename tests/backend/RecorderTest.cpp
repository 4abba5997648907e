// The retrospective record in the whole backend.
#include "backend/BackendRig.h"
#include "core/QelMessageManager.h"
#include "core/QelUtils.h"
#include "generators/recording/RecordContent.h"
#include "generators/recording/RecordFolder.h"
#include "generators/recording/RetroRecord.h"
#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "platform/SettingsStore.h"
#include "values/OnOffToggle.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

using Backend::QelMessageManager;

// The messages of a MIDI file that the record made, without times: "90 60 100; ...".
std::string messagesOf(const std::filesystem::path& file) {
    const auto content = Platform::readWholeFile(file, 1'000'000);
    if (!content) {
        return "no file";
    }
    Backend::Recording::BufferReader events(std::string_view(content.value()).substr(22));
    std::string text;
    for (Backend::Recording::BufferEvent event; events.next(event);) {
        for (std::size_t i = 0; i < event.message.size(); ++i) {
            char number[8];
            std::snprintf(number, sizeof number, i == 0 ? "%02X" : " %d", static_cast<unsigned char>(event.message[i]));
            text += number;
        }
        text += "; ";
    }
    return text;
}

class Recorder : public testing::Test {
protected:
    std::string save() {
        const auto saved = rig.qel->getRetroRecord().save(target, std::nullopt);
        const std::string text = messagesOf(target);
        std::filesystem::remove(target);
        return saved ? text : saved.fault().text();
    }

    BackendRig rig;
    const std::filesystem::path target = rig.writeFile("x", "") + ".mid";
};

TEST_F(Recorder, KeepsWhatLeavesAndNothingElse) {
    const std::string end = "B0 120 0; ";
    static_cast<void>(save()); // what the start sent
    rig.afterMidi(0x90, 60, 100);
    rig.afterMidi(0xC3, 5, 0);
    rig.afterMidi(0x80, 60, 11);
    EXPECT_EQ(save(), "90 60 100; C0 5; 80 60 11; " + end);
    EXPECT_EQ(save(), "no file");

    rig.after(
        [](QelMessageManager& backend) { backend.postChangeMidiThru(OnOffToggle(OnOffToggle::State::off), false); });
    rig.afterMidi(0x90, 60, 100);
    EXPECT_EQ(save(), "no file") << "with thru off it is not played";
    rig.after(
        [](QelMessageManager& backend) { backend.postChangeMidiThru(OnOffToggle(OnOffToggle::State::on), false); });

    rig.after([](QelMessageManager& backend) { backend.postEnableRetroRecord(false); });
    rig.afterMidi(0x90, 62, 100);
    rig.after([](QelMessageManager& backend) { backend.postEnableRetroRecord(true); });
    rig.afterMidi(0x90, 64, 100);
    EXPECT_EQ(save(), "90 64 100; " + end);
    EXPECT_EQ(rig.qel->getRetroRecord().missed(), 0U);
}

TEST_F(Recorder, OutlivesTheProgramOnceAndTellsOfItsTakes) {
    static_cast<void>(save());
    rig.afterMidi(0x90, 60, 100);
    const auto takes = rig.qel->getRetroRecord().takes();
    ASSERT_EQ(takes.size(), 1U);
    EXPECT_EQ(takes[0].notes, 1U);
    const auto folder = rig.qel->getRetroRecord().folder();
    rig.stop();
    EXPECT_EQ(Backend::Recording::takesIn(folder), takes) << "the notes of the end were off before";
    rig.start();
    EXPECT_EQ(Backend::Recording::takesIn(Backend::Recording::RecordFolder::previous(folder)), takes);
    EXPECT_EQ(rig.qel->getRetroRecord().folder(), folder);
}

TEST_F(Recorder, TakesItsSizesAndItsFolderFromTheSettings) {
    const std::filesystem::path folder = target.parent_path() / "elsewhere";
    rig.after([](QelMessageManager& backend) { backend.postSetRetroRecordBufferSize(2); });
    rig.stop();
    {
        const auto store = Platform::fileSettingsStore(target.parent_path());
        const auto key = store->open(Platform::SettingsRoot::currentUser, Backend::QelUtils::getRegistryKey("Test"));
        ASSERT_NE(key, nullptr);
        key->write("MaxMidiBufferFileSize", Platform::SettingsValue::ofNumber(22));
        key->write("MidiBufferDir", Platform::SettingsValue::ofString(Platform::textOf(folder)));
    }
    rig.start();
    for (int i = 0; i < 40; ++i) {
        rig.afterMidi(0xB0, i, 1);
    }
    EXPECT_EQ(rig.qel->getRetroRecord().folder(), folder);
    const auto saved = rig.qel->getRetroRecord().save(target, std::nullopt).value();
    EXPECT_GE(saved.events, 6U) << "two full files of three or four events, and one more";
    EXPECT_LE(saved.events, 12U);
}

} // namespace
