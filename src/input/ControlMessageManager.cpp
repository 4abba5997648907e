#include "input/ControlMessageManager.h"

#include "core/QelIF.h"
#include "input/ControlMessages.h"
#include "input/ControlSection.h"

#include <cassert>
#include <utility>

namespace Backend::Controls {

using Tell = ControlSection::Tell;

// The numbers up to select are fixed.
enum class ControlMessageManager::Message : std::uint32_t {
    put = Platform::applicationMessage + 1201,
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

Cell cellIn(std::uintptr_t parameter) {
    return Cell::fromPacked(static_cast<std::uint32_t>(parameter));
}

bool canBePosted(const Cell& cell) {
    return Cell::fromPacked(cell.getPacked()) == cell;
}

} // namespace

ControlMessageManager::ControlMessageManager(ControlSection& section, QelIF& qel, MessageManagerMaster& master)
    : PresetMessageManager(master, Message::put, Message::move, Message::storePreset), section_(section), qel_(qel) {}

void ControlMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    if (handlePreset(section_, message)) {
        return;
    }
    const std::uintptr_t w = message.wParam;
    const auto value = static_cast<std::int32_t>(message.lParam);
    switch (static_cast<Message>(message.id)) {
    case Message::put:
        return put(*takeCopy<std::vector<Control>>(w));
    case Message::set:
        return section_.set(std::move(*takeCopy<ControlMap>(w)));
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
    case Message::storePreset:
    case Message::deletePreset:
    case Message::savePreset:
        return; // done above
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

void ControlMessageManager::postCell(Message message, const Cell& cell, std::int32_t value) {
    if (canBePosted(cell)) {
        post(message, cell.getPacked(), value);
    }
}

void ControlMessageManager::postPut(std::vector<Control> controls) {
    postValue(Message::put, std::move(controls));
}

void ControlMessageManager::postSet(ControlMap map) {
    postValue(Message::set, std::move(map));
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
    return tryPost(Message::takeIn);
}

} // namespace Backend::Controls
