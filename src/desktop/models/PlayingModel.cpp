#include "desktop/models/PlayingModel.h"

#include "gui/GuiMessages.h"

namespace Desktop {

using Backend::MidiEngine::QelMidiMessage;

PlayingModel::PlayingModel() {
    on(idOf(Gui::GuiMessage::midiSent), [this](std::uintptr_t w, std::intptr_t l) { sent(QelMidiMessage(w, l)); });
    on(idOf(Gui::GuiMessage::midiReceived),
       [this](std::uintptr_t w, std::intptr_t l) { emit received(QelMidiMessage(w, l)); });
    on(idOf(Gui::GuiMessage::reset), [this](std::uintptr_t, std::intptr_t) { clear(); });
    on(idOf(Gui::GuiMessage::clearMusicKeyboard), [this](std::uintptr_t, std::intptr_t) { clear(); });
}

void PlayingModel::sent(const QelMidiMessage& message) {
    if (!message.isNote()) {
        if (message.isControllerChange()) {
            emit controllerSent(message);
        }
        return;
    }
    const auto output = static_cast<std::size_t>(message.getOutput() & 0x7F);
    const auto channel = static_cast<std::size_t>(message.getChannel() & 0x0F);
    const auto note = static_cast<std::size_t>(message.getD1() & 0x7F);
    const bool on = message.isNoteOn() && message.getD2() > 0;
    auto bit = sounding_[output][channel][note];
    if (bit == on) {
        return;
    }
    bit = on;
    const int step = on ? 1 : -1;
    count_ += step;
    places_[note][channel] = static_cast<std::uint16_t>(places_[note][channel] + step);
    emit noteChanged(static_cast<int>(note));
}

int PlayingModel::channelOf(int note) const {
    const auto& places = places_[static_cast<std::size_t>(note & 0x7F)];
    for (std::size_t channel = 0; channel < places.size(); ++channel) {
        if (places[channel] > 0) {
            return static_cast<int>(channel);
        }
    }
    return -1;
}

bool PlayingModel::isChannelBusy(int channel, int output) const {
    const auto place = static_cast<std::size_t>(channel & 0x0F);
    if (output >= 0) {
        return sounding_[static_cast<std::size_t>(output & 0x7F)][place].any();
    }
    for (const auto& each : sounding_) {
        if (each[place].any()) {
            return true;
        }
    }
    return false;
}

void PlayingModel::clear() {
    sounding_ = {};
    places_ = {};
    count_ = 0;
    emit cleared();
}

} // namespace Desktop
