#include "input/ControlSection.h"

#include "core/QelIF.h"
#include "input/ControlDefaults.h"
#include "input/ControlGrid.h"
#include "input/ControlMessages.h"
#include "input/ControlXml.h"
#include "midiengine/MidiEngine.h"
#include "platform/WindowMessages.h"

#include <utility>

namespace Backend::Controls {

using MidiEngine::QelMidiMessage;

namespace {

Component::SectionText<ControlMap, std::vector<Cell>> sectionText() {
    return {readControls, [](std::ostream& out, int depth, const ControlMap& map) { writeControls(out, depth, map); },
            [](std::ostream& out, const ControlMap& map, const std::vector<Cell>& cells) {
                writeControls(out, 0, map, cells);
            }};
}

} // namespace

ControlSection::ControlSection(QelIF& qel, MidiEngine::MidiEngine& engine, std::filesystem::path presetFolder,
                               const std::function<void(const Platform::Fault&)>& reportFault,
                               std::function<bool()> wake)
    : qel_(qel), engine_(engine), wake_(std::move(wake)),
      presets_(std::move(presetFolder), controlsFormat(), sectionText(), defaultControls(), reportFault),
      follower_(std::make_unique<ControlFollower>(map_, wake_)) {
    setDefault();
}

ControlSection::~ControlSection() {
    engine_.setControlFollower(nullptr);
}

const ControlMap& ControlSection::map() {
    takeIn();
    return map_;
}

// Whole sections. ------------------------------------------------------------------------------------------------

template <typename Change> void ControlSection::exchange(Change change) {
    engine_.setControlFollower(nullptr);
    takeIn();
    change();
    ++revision_;
    follower_ = std::make_unique<ControlFollower>(map_, wake_);
    engine_.setControlFollower(follower_->isEmpty() ? nullptr : follower_.get());
}

void ControlSection::setDefault() {
    set(defaultControls());
}

void ControlSection::read(const Platform::XmlElement& section) {
    takeIn();
    set(presets_.readSection(section, map_));
}

void ControlSection::write(std::ostream& out, int depth, bool allowReference) {
    takeIn();
    presets_.writeSection(out, depth, map_, isChanged_, allowReference);
}

void ControlSection::set(ControlMap map) {
    exchange([&] {
        map_ = std::move(map);
        isChanged_ = false;
        selection_.clear();
        movedByOthers_.clear();
    });
}

void ControlSection::put(const std::vector<Control>& controls) {
    exchange([&] {
        for (const Control& control : controls) {
            map_.store(control.cell, control);
            movedByOthers_.erase(control.cell);
        }
        isChanged_ = true;
    });
}

// Values. --------------------------------------------------------------------------------------------------------

void ControlSection::setValue(const Cell& cell, std::int32_t value, Tell tell) {
    takeIn();
    if (Control* control = map_.find(cell)) {
        assign(*control, value, tell);
    }
}

void ControlSection::release(const Cell& cell) {
    takeIn();
    Control* control = map_.find(cell);
    if (control != nullptr && control->release != Control::NO_RELEASE) {
        assign(*control, control->release, Tell::window);
    }
}

void ControlSection::change(const SelectControlType& which, const RelativeFixedValue& value) {
    takeIn();
    for (const Cell& cell : addressedControls(which, map_, selection_)) {
        Control& control = *map_.find(cell);
        assign(control, value.applyTo(control.value), Tell::window);
    }
}

void ControlSection::assign(Control& control, std::int32_t value, Tell tell) {
    if (!control.type.sends()) {
        return;
    }
    value = control.clamped(value);
    const Numberless numberless = value == control.value ? Numberless::skip : Numberless::send;
    control.value = value;
    isChanged_ = isChanged_ || numberless == Numberless::send;
    if (tell == Tell::window) {
        tellWindow(control);
    }
    sendEvents(control, numberless);
}

void ControlSection::send(const SelectControlType& which) {
    takeIn();
    for (const Cell& cell : addressedControls(which, map_, selection_)) {
        sendEvents(*map_.find(cell), Numberless::send);
    }
}

void ControlSection::sendAutomatically() {
    takeIn();
    for (const Cell& cell : addressedControls(SelectControlType(SelectControlType::Kind::all), map_, selection_)) {
        if (const Control& control = *map_.find(cell); control.autoSend) {
            sendEvents(control, Numberless::send);
        }
    }
}

void ControlSection::sendEvents(const Control& control, Numberless numberless) {
    if (!control.type.sends()) {
        return;
    }
    movedByOthers_.erase(control.cell);
    for (const ValueEvent& event : control.events) {
        if (!event.canBeSent() || (event.greatestValue() == 0 && numberless == Numberless::skip)) {
            continue;
        }
        if (event.message.isProgramChange()) {
            for (const QelMidiMessage& select : banks_.takeSelectsFor(event, control.cell)) {
                qel_.playMidi(select);
            }
        }
        banks_.remember(event, control.value);
        qel_.playMidi(event.withValue(control.value, control.cell));
    }
}

// Following. -----------------------------------------------------------------------------------------------------

void ControlSection::takeIn() {
    follower_->drain([this](const ControlFollower::Passed& passed) { follow(passed); });
}

void ControlSection::update(const QelMidiMessage& message) {
    takeIn();
    follower_->passed(message, false);
    takeIn();
}

void ControlSection::follow(const ControlFollower::Passed& passed) {
    if (passed.own && !movedByOthers_.contains(passed.cell)) {
        return;
    }
    if (!passed.own) {
        movedByOthers_.insert(passed.cell);
    }
    Control& control = *map_.find(passed.cell);
    banks_.remember(control.events[passed.event], passed.value);
    const std::int32_t value = control.clamped(passed.value);
    if (value != control.value) {
        control.value = value;
        isChanged_ = true;
        tellWindow(control);
    }
}

void ControlSection::tellWindow(const Control& control) const {
    if (const Platform::WindowHandle window = qel_.getGuiWindowHandle()) {
        Platform::postWindowMessage(window, {controlMovedMessage, control.cell.getPacked(), control.value});
    }
}

// The selection. -------------------------------------------------------------------------------------------------

void ControlSection::select(const SelectControlType& which) {
    selection_ = selectedControls(which, map_, selection_);
}

void ControlSection::select(const std::vector<Cell>& cells) {
    selection_ = {cells.begin(), cells.end()};
    std::erase_if(selection_, [this](const Cell& cell) { return map_.find(cell) == nullptr; });
}

void ControlSection::setFocus(const SelectControlType& which) {
    if (const Platform::WindowHandle window = qel_.getGuiWindowHandle()) {
        Platform::postWindowMessage(window, {focusControlMessage, static_cast<std::uintptr_t>(which.getKind()),
                                             static_cast<std::intptr_t>(which.getCell().getPacked())});
    }
}

// Presets. -------------------------------------------------------------------------------------------------------

void ControlSection::loadPreset(const std::string& name) {
    takeIn();
    if (auto loaded = presets_.load(name, map_)) {
        set(std::move(*loaded));
    }
}

void ControlSection::savePreset(const std::string& name, const std::vector<Cell>& cells) {
    takeIn();
    if (presets_.save(name, map_, cells)) {
        map_.presetName = name;
        isChanged_ = false;
        ++revision_;
    }
}

} // namespace Backend::Controls
