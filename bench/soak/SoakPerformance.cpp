#include "SoakPerformance.h"

#include "backend/FileCheck.h"
#include "core/FolderNames.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "host/SmfReader.h"
#include "midiengine/MidiEngine.h"
#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "values/SelectType.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <set>
#include <utility>

namespace Soak {

namespace {

namespace fs = std::filesystem;
namespace FolderNames = Backend::FolderNames;

constexpr std::size_t eventsPerEdit = 24;
constexpr std::size_t eventsPerUnplugging = 20 * eventsPerEdit;
constexpr int minutesPerBank = 7; // saving a bank takes longer than most minutes
// What play may add to the memory of the process before it counts as a leak, beyond what the first ten minutes need.
constexpr long allowedGrowth = 24 * 1024; // KiB
// A rendering's clock holds 2,000,000,000 ticks: more than 500 hours.
constexpr int minutesAClock = Host::latestTick / ticksPerMinute - 1;

// Memory of this process in KiB; 0 where the system does not say.
long memoryInUse() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            long kib = 0;
            status >> kib;
            return kib;
        }
    }
    return 0;
}

// Functions that load the section presets that lie in the folder.
std::vector<std::string> presetFunctions(const fs::path& data) {
    const std::pair<const char*, const char*> folders[] = {
        {FolderNames::computerInputPresets, "LoadComputerInputPreset"},
        {FolderNames::controlPresets, "LoadControlPreset"},
        {FolderNames::joystickPresets, "LoadJoystickInputPreset"},
        {FolderNames::layerPresets, "LoadLayerPreset"},
        {FolderNames::midiInputPresets, "LoadMidiInputPreset"},
        {FolderNames::oscillatorPresets, "LoadOscillatorPreset"}};
    std::vector<std::string> functions;
    for (const auto& [folder, function] : folders) {
        std::error_code failure;
        for (const auto& file : fs::directory_iterator(data / folder, failure)) {
            functions.push_back("<" + std::string(function) + " preset=\"" + Platform::textOf(file.path().stem()) +
                                "\"/>");
        }
    }
    std::sort(functions.begin(), functions.end()); // the system lists them in any order
    return functions;
}

// A file that cannot be read as what it says that it is.
std::optional<std::string> faultOf(const fs::path& file, const fs::path& data) {
    if (file.extension() != ".mid") {
        const auto faults = Backend::checkFile(file, data);
        return faults.empty() ? std::nullopt : std::optional(faults.front().text());
    }
    std::error_code error;
    if (!fs::exists(file, error)) { // nothing has been played since the take before
        return std::nullopt;
    }
    auto content = Platform::readWholeFile(file, std::size_t{1} << 30);
    const auto read = content ? Host::SmfReader::open(std::move(content.value()), Platform::textOf(file), 1)
                              : Platform::Result<std::unique_ptr<Host::SmfReader>>(content.fault());
    return read ? std::nullopt : std::optional(read.fault().text());
}

// The renderer waits until all that was posted has been done; the event itself does nothing.
Host::PerformanceEvent waiting(std::int32_t tick) {
    constexpr std::uint8_t nobodysJoystick = 9;
    return {tick, Host::ButtonMoves{Host::Press::up, nobodysJoystick, 0}};
}

} // namespace

SoakPerformance::SoakPerformance(SoakSetting setting, Backend::QelIF& qel, SoundingSink& sink)
    : setting_(std::move(setting)), qel_(qel), sink_(sink),
      play_(setting_.seed, setting_.inputs, presetFunctions(setting_.data)),
      edits_(setting_.seed + 1, setting_.data, setting_.inputs, setting_.outputs) {}

bool SoakPerformance::next(Host::PerformanceEvent& event) {
    if (next_ == events_.size()) {
        if (!beginStage()) {
            return false;
        }
        next_ = 0;
    }
    const bool isPlaying = stage_ == Stage::stop;
    if (isPlaying && editIsDue_) {
        edit();
        editIsDue_ = false;
        edited_ = next_;
        event = waiting(events_[next_].tick);
        return true;
    }
    if (isPlaying && next_ > edited_ && next_ % eventsPerEdit == 0) {
        editIsDue_ = true;
        event = waiting(events_[next_].tick);
        return true;
    }
    event = events_[next_++];
    return true;
}

bool SoakPerformance::beginStage() {
    switch (stage_) {
    case Stage::play:
        if (minute_ == setting_.minutes) {
            return false;
        }
        play();
        stage_ = Stage::stop;
        return true;
    case Stage::stop:
        stop();
        stage_ = Stage::silence;
        return true;
    case Stage::silence:
        if (!checkSilence()) {
            return false;
        }
        saveAndLoad();
        stage_ = Stage::files;
        return true;
    case Stage::files:
        if (!checkFiles()) {
            return false;
        }
        stage_ = Stage::bank;
        return true;
    case Stage::bank:
        if (!checkBank() || !checkMemory()) {
            return false;
        }
        ++minute_;
        report();
        stage_ = Stage::play;
        return beginStage();
    }
    return false;
}

void SoakPerformance::play() {
    events_ = play_.minute(startOfMinute());
    // Behind messages that are still on their way nothing may be posted that resets: nobody would run the slice for it.
    events_.push_back(waiting(startOfMinute() + ticksPlayed));
    edited_ = 0;
}

void SoakPerformance::edit() {
    edits_.post(qel_);
    if (next_ % eventsPerUnplugging == 0) {
        unplug(static_cast<int>(next_ / eventsPerUnplugging) % setting_.outputs);
    }
}

void SoakPerformance::stop() {
    const std::int32_t end = startOfMinute() + ticksPlayed;
    qel_.getQelMessageManager().postCall([](Backend::QelIF& qel) { qel.setOscillators({}); });
    events_ = {
        {end, Host::ExecuteFunction{"<ChangeMidiThru value='on'/>"}}, {end, Host::ResetAll{}}, waiting(endOfMinute())};
}

bool SoakPerformance::checkSilence() {
    for (const int output : std::exchange(unplugged_, {})) {
        sink_.forget(output);
    }
    plug();
    if (sink_.sounding() > 0 || qel_.getMidiEngine().soundingNotes() > 0) {
        return fail("sounds after a reset:" + sink_.text());
    }
    if (qel_.getMidiEngine().isBusy()) {
        return fail("something still waits in the engine after a reset");
    }
    return true;
}

void SoakPerformance::saveAndLoad() {
    const fs::path saved = setting_.data / "soak.prg";
    qel_.getQelMessageManager().postCall([this, saved](Backend::QelIF& qel) {
        before_ = qel.getProgramText();
        qel.saveToProgram(Platform::textOf(saved), {});
        qel.loadProgram(Platform::textOf(saved));
        after_ = qel.getProgramText();
    });
    events_ = {waiting(endOfMinute())};
}

bool SoakPerformance::checkFiles() {
    if (before_ != after_) {
        std::ofstream("soak-before.prg") << before_;
        std::ofstream("soak-after.prg") << after_;
        return fail("a saved program loads to another; see soak-before.prg and soak-after.prg");
    }
    std::set<fs::path> files{setting_.data / "soak.prg"};
    for (const fs::path& file : edits_.takeWritten()) {
        files.insert(file);
    }
    const fs::path bank = setting_.data / FolderNames::banks / "Default Bank.bnk";
    if (minute_ % minutesPerBank == 0) {
        files.insert(bank);
    }
    for (const fs::path& file : files) {
        if (const auto fault = faultOf(file, setting_.data)) {
            return fail("a saved file is not as it must be: " + *fault);
        }
    }
    if (minute_ % minutesPerBank == 0) {
        const int slot = minute_ % 24;
        qel_.getQelMessageManager().postCall([this, bank, slot](Backend::QelIF& qel) {
            qel.saveToCurrentBank(slot, {});
            qel.loadBank(Platform::textOf(bank));
            qel.changeProgram(SelectType::fixed(slot));
            after_ = qel.getProgramText();
        });
    }
    events_ = {waiting(endOfMinute())};
    return true;
}

bool SoakPerformance::checkBank() {
    return before_ == after_ || fail("a program comes out of its bank as another");
}

bool SoakPerformance::checkMemory() {
    const long memory = memoryInUse();
    if (minute_ == 10) {
        memoryAtTen_ = memory;
    }
    return minute_ <= 10 || memory <= memoryAtTen_ + allowedGrowth ||
           fail("memory grew from " + std::to_string(memoryAtTen_) + " to " + std::to_string(memory) + " KiB");
}

// An output vanishes until the end of the minute, with what sounds there.
void SoakPerformance::unplug(int output) {
    unplugged_.push_back(output);
    plug();
}

void SoakPerformance::plug() {
    std::vector<Backend::MidiOutputPort> ports(static_cast<std::size_t>(setting_.outputs));
    for (std::size_t i = 0; i < ports.size(); ++i) {
        ports[i].name = "Port " + std::to_string(i + 1);
        ports[i].system = "none";
        ports[i].enabled = std::find(unplugged_.begin(), unplugged_.end(), static_cast<int>(i)) == unplugged_.end();
    }
    qel_.getQelMessageManager().postSetMidiOutputPorts(ports);
}

bool SoakPerformance::fail(const std::string& what) {
    broken_ = "minute " + std::to_string(minute_) + ": " + what;
    return false;
}

void SoakPerformance::report() const {
    if (minute_ % 60 == 0 || minute_ == setting_.minutes) {
        std::cout << minute_ << " minutes, " << sink_.messages() << " messages out, " << memoryInUse() << " KiB"
                  << std::endl;
    }
}

std::int32_t SoakPerformance::startOfMinute() const {
    return (minute_ % minutesAClock) * ticksPerMinute + 1;
}

std::int32_t SoakPerformance::endOfMinute() const {
    return startOfMinute() + ticksPerMinute - 1;
}

} // namespace Soak
