#include "backend/OscMessageManager.h"

#include "backend/OscillatorSection.h"
#include "core/MessageManagerMaster.h"
#include "core/MessageParameters.h"

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

struct StoredPreset {
    std::string name;
    OscList list;
};
struct SavedPreset {
    std::string name;
    std::vector<OscId> ids;
};
struct PlayingChange {
    SelectType which;
    OnOffToggle how;
};
struct SpeedChange {
    SelectType which;
    RelativeFixedValue value;
};

} // namespace

bool OscMessageManager::wantMessage(std::uint32_t id) const {
    return id >= static_cast<std::uint32_t>(Message::set) && id <= static_cast<std::uint32_t>(Message::select);
}

void OscMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    const std::uintptr_t w = message.wParam;
    switch (static_cast<Message>(message.id)) {
    case Message::set:
        return section_.set(std::move(*takeCopy<OscList>(w)));
    case Message::put:
        return section_.put(*takeCopy<std::vector<Oscillator>>(w));
    case Message::loadPreset:
        return section_.loadPreset(*takeCopy<std::string>(w));
    case Message::storePreset: {
        const auto preset = takeCopy<StoredPreset>(w);
        return section_.storePreset(preset->name, preset->list);
    }
    case Message::deletePreset:
        return section_.deletePreset(*takeCopy<std::string>(w));
    case Message::savePreset: {
        const auto preset = takeCopy<SavedPreset>(w);
        return section_.savePreset(preset->name, preset->ids);
    }
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
    }
}

template <typename Value> void OscMessageManager::postValue(Message message, Value&& value) {
    postCopy(std::forward<Value>(value),
             [&](std::uintptr_t copy) { return post(static_cast<std::uint32_t>(message), copy); });
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

void OscMessageManager::postStorePreset(std::string name, OscList list) {
    postValue(Message::storePreset, StoredPreset{std::move(name), std::move(list)});
}

void OscMessageManager::postDeletePreset(std::string name) {
    postValue(Message::deletePreset, std::move(name));
}

void OscMessageManager::postSavePreset(std::string name, std::vector<OscId> ids) {
    postValue(Message::savePreset, SavedPreset{std::move(name), std::move(ids)});
}

bool OscMessageManager::tryPostShowValues() noexcept {
    return getMaster().tryPostMessage(static_cast<std::uint32_t>(Message::showValues));
}

} // namespace Backend::Oscillators
