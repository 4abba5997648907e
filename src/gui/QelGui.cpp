#include "gui/QelGui.h"

#include "core/MessageParameters.h"
#include "core/QelIF.h"
#include "values/QelMidiMessage.h"

namespace Gui {

QelGui::QelGui(Backend::QelIF& backend, const Backend::RegistrySettings& settings,
               const std::vector<Backend::MidiInputPort>& inputs, const std::vector<Backend::MidiOutputPort>& outputs,
               const SequencePresetList& sequences)
    : backend_(backend), settings_(settings), inputs_(inputs), outputs_(outputs), sequences_(sequences) {}

QelGui::~QelGui() {
    closeWindow();
}

void QelGui::openWindow(std::function<void()> wake) {
    master_.setThreadId(Platform::currentThreadId());
    window_ = Platform::createWindowEndpoint(
        [this](const Platform::ThreadMessage& message) {
            master_.handleMessage(window_.load(), message.id, message.wParam, message.lParam);
        },
        std::move(wake));
}

void QelGui::closeWindow() {
    if (window_.load() != nullptr) {
        static_cast<void>(Platform::dispatchWindowMessages());
        Platform::destroyWindowEndpoint(window_.exchange(nullptr));
    }
}

bool QelGui::isShowing(Panel panel) const {
    return (showing_.load() >> static_cast<std::uint32_t>(panel) & 1U) != 0;
}

void QelGui::noteShowing(Panel panel, bool on) {
    const std::uint32_t bit = 1U << static_cast<std::uint32_t>(panel);
    if (on) {
        showing_.fetch_or(bit);
    } else {
        showing_.fetch_and(~bit);
    }
}

Backend::QelMessageManager& QelGui::getQelMessageManager() {
    return backend_.getQelMessageManager();
}

std::string QelGui::getMidiOutputName(char output) {
    const auto place = static_cast<std::size_t>(output);
    return output >= 0 && place < outputs_.size() ? outputs_[place].name : std::to_string(int{output} + 1);
}

std::string QelGui::getCurrentBankName() {
    const auto slash = bank_.path.find_last_of("/\\");
    const std::string file = slash == std::string::npos ? bank_.path : bank_.path.substr(slash + 1);
    return file.ends_with(".bnk") ? file.substr(0, file.size() - 4) : file;
}

bool QelGui::post(GuiMessage message, std::uintptr_t wParam, std::intptr_t lParam) {
    return master_.postMessage(window_.load(), idOf(message), wParam, lParam);
}

template <typename Value> void QelGui::postValue(GuiMessage message, const Value& value) {
    Backend::postCopy(value, [&](std::uintptr_t copy) { return post(message, copy); });
}

void QelGui::postSetting(ChangedSetting setting, int value) {
    post(GuiMessage::setting, static_cast<std::uintptr_t>(setting), value);
}

void QelGui::moveWindow(const RelativeFixedValue& x, const RelativeFixedValue& y) {
    postValue(GuiMessage::moveWindow, WindowMove{x, y});
}

void QelGui::displayMidiOutputEvent(const Backend::MidiEngine::QelMidiMessage& message) {
    post(GuiMessage::midiSent, static_cast<std::uintptr_t>(message.getWparam()),
         static_cast<std::intptr_t>(message.getLparam()));
}

void QelGui::displayHelp(const std::string& text) {
    postValue(GuiMessage::help, text);
}

void QelGui::handleDefaultBankChanged(const std::string& path) {
    postValue(GuiMessage::defaultBank, path);
}

void QelGui::handleBankChanged(const BankInfo& bank) {
    postValue(GuiMessage::bank, bank);
}

void QelGui::handleProgramChanged(const ProgramInfo& program) {
    postValue(GuiMessage::program, program);
}

void QelGui::handleMidiInputPortsChanged(const std::vector<Backend::MidiInputPort>& ports) {
    postValue(GuiMessage::inputPorts, ports);
}

void QelGui::handleMidiOutputPortsChanged(const std::vector<Backend::MidiOutputPort>& ports) {
    postValue(GuiMessage::outputPorts, ports);
}

} // namespace Gui
