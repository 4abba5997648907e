#include "backend/OscMessageManager.h"

#include "backend/OscillatorSection.h"

#include <cassert>
#include <utility>

namespace Backend::Oscillators {

// The numbers of the presets are fixed.
enum class OscMessageManager::Message : std::uint32_t {
    set = Platform::applicationMessage + 2701,
    put,
    loadPreset,
    storePreset,
    deletePreset,
    savePreset,
    showValues,
    changePlaying,
    changeSpeed,
    dataSelect,
    select
};

namespace {

struct PlayingChange {
    SelectType which;
    OnOffToggle how;
};
struct SpeedChange {
    SelectType which;
    RelativeFixedValue value;
};

} // namespace

OscMessageManager::OscMessageManager(OscillatorSection& section, MessageManagerMaster& master)
    : PresetMessageManager(master, Message::set, Message::select, Message::storePreset), section_(section) {}

void OscMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    if (handlePreset(section_, message)) {
        return;
    }
    const std::uintptr_t w = message.wParam;
    switch (static_cast<Message>(message.id)) {
    case Message::set:
        return section_.set(std::move(*takeCopy<OscList>(w)));
    case Message::put:
        return section_.put(*takeCopy<std::vector<Oscillator>>(w));
    case Message::loadPreset:
        return section_.loadPreset(*takeCopy<std::string>(w));
    case Message::showValues:
        return section_.showValues();
    case Message::changePlaying: {
        const auto change = takeCopy<PlayingChange>(w);
        return section_.changePlaying(change->which, change->how);
    }
    case Message::changeSpeed: {
        const auto change = takeCopy<SpeedChange>(w);
        return section_.changeSpeed(change->which, change->value);
    }
    case Message::dataSelect:
        return section_.select(*takeCopy<SelectType>(w));
    case Message::select:
        return section_.select(*takeCopy<std::vector<OscId>>(w));
    case Message::storePreset:
    case Message::deletePreset:
    case Message::savePreset:
        return; // done above
    }
}

void OscMessageManager::postSet(OscList list) {
    postValue(Message::set, std::move(list));
}

void OscMessageManager::postPut(std::vector<Oscillator> oscillators) {
    postValue(Message::put, std::move(oscillators));
}

void OscMessageManager::postChangePlaying(const SelectType& which, const OnOffToggle& how) {
    postValue(Message::changePlaying, PlayingChange{which, how});
}

void OscMessageManager::postChangeSpeed(const SelectType& which, const RelativeFixedValue& value) {
    postValue(Message::changeSpeed, SpeedChange{which, value});
}

void OscMessageManager::postDataSelect(const SelectType& which) {
    postValue(Message::dataSelect, which);
}

void OscMessageManager::postSelect(std::vector<OscId> ids) {
    postValue(Message::select, std::move(ids));
}

void OscMessageManager::postLoadPreset(std::string name) {
    postValue(Message::loadPreset, std::move(name));
}

bool OscMessageManager::tryPostShowValues() noexcept {
    return tryPost(Message::showValues);
}

} // namespace Backend::Oscillators
