#include "input/ControlMessageManager.h"

#include "core/MessageManagerMaster.h"
#include "core/MessageParameters.h"
#include "core/QelIF.h"
#include "input/ControlMessages.h"
#include "input/ControlSection.h"

#include <cassert>
#include <utility>

namespace Backend::Controls {

using Tell = ControlSection::Tell;

// The numbers up to select are fixed.
enum class ControlMessageManager::Message : std::uint32_t {
    put = 33969,
    set,
    storePreset,
    deletePreset,
    savePreset,
    setValue,
    sendAll,
    release,
    select,
    takeIn,
    move
};

namespace {

struct StoredPreset {
    std::string name;
    ControlMap map;
};

struct SavedPreset {
    std::string name;
    std::vector<Cell> cells;
};

Cell cellIn(std::uintptr_t parameter) {
    return Cell::fromPacked(static_cast<std::uint32_t>(parameter));
}

bool canBePosted(const Cell& cell) {
    return Cell::fromPacked(cell.getPacked()) == cell;
}

} // namespace

bool ControlMessageManager::wantMessage(std::uint32_t id) const {
    return id >= static_cast<std::uint32_t>(Message::put) && id <= static_cast<std::uint32_t>(Message::move);
}

void ControlMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    const std::uintptr_t w = message.wParam;
    const auto value = static_cast<std::int32_t>(message.lParam);
    switch (static_cast<Message>(message.id)) {
    case Message::put:
        return put(*takeCopy<std::vector<Control>>(w));
    case Message::set:
        return section_.set(std::move(*takeCopy<ControlMap>(w)));
    case Message::storePreset: {
        const auto preset = takeCopy<StoredPreset>(w);
        return section_.storePreset(preset->name, preset->map);
    }
    case Message::deletePreset:
        return section_.deletePreset(*takeCopy<std::string>(w));
    case Message::savePreset: {
        const auto preset = takeCopy<SavedPreset>(w);
        return section_.savePreset(preset->name, preset->cells);
    }
    case Message::setValue:
        return section_.setValue(cellIn(w), value, Tell::nobody);
    case Message::sendAll:
        return section_.send(SelectControlType(SelectControlType::Kind::all));
    case Message::release:
        return section_.release(cellIn(w));
    case Message::select:
        return section_.select(*takeCopy<std::vector<Cell>>(w));
    case Message::takeIn:
        return section_.takeIn();
    case Message::move:
        return section_.setValue(cellIn(w), value, Tell::window);
    }
}

void ControlMessageManager::put(const std::vector<Control>& controls) {
    section_.put(controls);
    if (const Platform::WindowHandle window = qel_.getGuiWindowHandle()) {
        postCopy(controls, [window](std::uintptr_t copy) {
            return Platform::postWindowMessage(window, {controlsPutMessage, copy, 0});
        });
    }
}

bool ControlMessageManager::post(Message message, std::uintptr_t wParam, std::intptr_t lParam) {
    return MessageManager::post(static_cast<std::uint32_t>(message), wParam, lParam);
}

void ControlMessageManager::postCell(Message message, const Cell& cell, std::int32_t value) {
    if (canBePosted(cell)) {
        post(message, cell.getPacked(), value);
    }
}

template <typename Value> void ControlMessageManager::postValue(Message message, Value&& value) {
    postCopy(std::forward<Value>(value), [&](std::uintptr_t copy) { return post(message, copy); });
}

void ControlMessageManager::postPut(std::vector<Control> controls) {
    postValue(Message::put, std::move(controls));
}

void ControlMessageManager::postSet(ControlMap map) {
    postValue(Message::set, std::move(map));
}

void ControlMessageManager::postStorePreset(std::string name, ControlMap map) {
    postValue(Message::storePreset, StoredPreset{std::move(name), std::move(map)});
}

void ControlMessageManager::postDeletePreset(std::string name) {
    postValue(Message::deletePreset, std::move(name));
}

void ControlMessageManager::postSavePreset(std::string name, std::vector<Cell> cells) {
    postValue(Message::savePreset, SavedPreset{std::move(name), std::move(cells)});
}

void ControlMessageManager::postSetValue(const Cell& cell, std::int32_t value) {
    postCell(Message::setValue, cell, value);
}

void ControlMessageManager::postMove(const Cell& cell, std::int32_t value) {
    postCell(Message::move, cell, value);
}

void ControlMessageManager::postRelease(const Cell& cell) {
    postCell(Message::release, cell, 0);
}

void ControlMessageManager::postSendAll() {
    post(Message::sendAll);
}

void ControlMessageManager::postSelect(std::vector<Cell> cells) {
    postValue(Message::select, std::move(cells));
}

bool ControlMessageManager::tryPostTakeIn() noexcept {
    return getMaster().tryPostMessage(static_cast<std::uint32_t>(Message::takeIn));
}

} // namespace Backend::Controls
