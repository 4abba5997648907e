#include "BackendRig.h"

#include "backend/QelFactory.h"
#include "core/Barrier.h"
#include "core/MessageManagerMaster.h"
#include "core/QelMessageManager.h"
#include "midiengine/MidiEngine.h"
#include "platform/PathText.h"

#include <fstream>
#include <utility>

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

void BackendRig::start() {
    Backend::Surroundings surroundings = Backend::Surroundings::inFolder(folder_.path());
    surroundings.reportFault = [this](const Platform::Fault& fault) { faults_.push_back(fault.text()); };
    surroundings.openJoysticks = openJoysticks;
    qel = Backend::QelFactory::createQel("Test", player, true, surroundings);
    inputs = {{{"In 1", "none", true}}, {{"In 2", "none", true}}};
    outputs = {{{"Out 1", "none", true}}, {{"Out 2", "none", true}}, {{"Out 3", "none", true}}};
    Backend::QelMessageManager& backend = qel->getQelMessageManager();
    backend.sendInitialize();
    backend.sendSetMidiInputPorts(inputs);
    backend.sendSetMidiOutputPorts(outputs);
    backend.sendEndInitialize();
    settle();
}

void BackendRig::stop() {
    if (!qel) {
        return;
    }
    settle();
    qel->getQelMessageManager().sendEnd();
    qel->getMessageManagerMaster().stop();
    qel.reset();
}

void BackendRig::slice(int from, int to) {
    qel->getMidiEngine().playTimeSlice(Backend::engineTimeOrigin + Backend::Ticks{from},
                                       Backend::engineTimeOrigin + Backend::Ticks{to});
}

// Empty slices until all that was posted has been handled: resets wait for them.
void BackendRig::settle() {
    Backend::Barrier barrier([this] { player.wake(); });
    if (qel->getQelMessageManager().postBarrier(barrier)) {
        while (!barrier.isOpen()) {
            player.wait();
            slice(tick_, tick_);
        }
    }
    slice(tick_, tick_);
    slice(tick_, tick_ + 1);
    ++tick_;
}

std::string BackendRig::after(const std::function<void(Backend::QelMessageManager&)>& post) {
    static_cast<void>(player.takeLines());
    post(qel->getQelMessageManager());
    settle();
    std::string text;
    for (const std::string& line : player.takeLines()) {
        text += (text.empty() ? "" : "; ") + line.substr(line.find(' ') + 1);
    }
    return text;
}

std::string BackendRig::afterDirect(const std::function<void(Backend::QelIF&)>& operation) {
    return after([&](Backend::QelMessageManager&) { operation(*qel); });
}

std::string BackendRig::afterMidi(int status, int d1, int d2, int input) {
    return after([&](Backend::QelMessageManager& backend) {
        backend.postProcessMidiInputEvent({static_cast<MessageType>(status), static_cast<std::int8_t>(d1),
                                           static_cast<std::int8_t>(d2), static_cast<std::int8_t>(status & 15),
                                           QelMidiMessage::DEFAULT_OUTPUT, QelMidiMessage::DEFAULT_ZONE,
                                           static_cast<std::int8_t>(input), Backend::noTicks});
    });
}

void BackendRig::run(int ticks) {
    for (; ticks > 0; --ticks) {
        slice(tick_, tick_ + 1);
        ++tick_;
    }
}

void BackendRig::sleep(int ticks) {
    slice(tick_, tick_ + ticks);
    tick_ += ticks;
}

std::string BackendRig::afterKey() {
    std::string on = afterMidi(0x90, 60, 100);
    return on + "; " + afterMidi(0x80, 60, 64);
}

std::string BackendRig::writeFile(const std::string& name, const std::string& text) {
    const std::filesystem::path path = folder_.path() / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
    return Platform::textOf(path);
}

std::vector<std::string> BackendRig::takeFaults() {
    const std::string folder = Platform::textOf(folder_.path());
    for (std::string& fault : faults_) {
        if (fault.starts_with(folder)) {
            fault.erase(0, folder.size() + 1);
        }
    }
    return std::exchange(faults_, {});
}
