#include "midiinput/MidiInputMessageManager.h"

#include "midiinput/ConfigurationSection.h"

#include <cassert>
#include <utility>

namespace Backend::MidiInput {

// Their numbers are fixed; the window is sent some of them too.
enum class MidiInputMessageManager::Message : std::uint32_t {
    put = midiEventsPutMessage,
    loadPreset,
    storePreset,
    deletePreset,
    savePreset,
    remove = midiEventsRemovedMessage
};

MidiInputMessageManager::MidiInputMessageManager(ConfigurationSection& section, MessageManagerMaster& master)
    : PresetMessageManager(master, Message::put, Message::remove, Message::storePreset), section_(section) {}

void MidiInputMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    if (handlePreset(section_, message)) {
        return;
    }
    const std::uintptr_t w = message.wParam;
    switch (static_cast<Message>(message.id)) {
    case Message::put:
        return section_.put(*takeCopy<std::vector<MidiEventConfiguration>>(w));
    case Message::remove:
        return section_.remove(*takeCopy<std::vector<MidiEvent>>(w));
    case Message::loadPreset:
        return section_.loadPreset(*takeCopy<std::string>(w));
    case Message::storePreset:
    case Message::deletePreset:
    case Message::savePreset:
        return; // done above
    }
}

void MidiInputMessageManager::postPut(std::vector<MidiEventConfiguration> configurations) {
    postValue(Message::put, std::move(configurations));
}

void MidiInputMessageManager::postRemove(std::vector<MidiEvent> events) {
    postValue(Message::remove, std::move(events));
}

void MidiInputMessageManager::postLoadPreset(std::string name) {
    postValue(Message::loadPreset, std::move(name));
}

} // namespace Backend::MidiInput
