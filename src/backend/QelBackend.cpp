#include "backend/QelBackend.h"

#include "core/FactoryFiles.h"
#include "core/FolderNames.h"
#include "core/QelUtils.h"
#include "generators/OscillatorXml.h"
#include "gui/GuiMessages.h"
#include "input/ComputerInputXml.h"
#include "input/ControlXml.h"
#include "input/FunctionFactory.h"
#include "input/JoystickXml.h"
#include "midiengine/LayerXml.h"
#include "midiengine/ZoneXml.h"
#include "midiinput/IncomingMessage.h"
#include "midiinput/MidiInputXml.h"
#include "midiinput/TranslationFactory.h"
#include "platform/Notices.h"
#include "platform/PathText.h"
#include "values/OnOffToggle.h"
#include "values/SelectControlType.h"

#include <filesystem>
#include <system_error>

namespace Backend {

namespace {

// To the auxiliary thread: work on files that nobody waits for.
constexpr std::uint32_t tidyUpMessage = WorkerThread::STOP_MESSAGE + 1;

std::string settingsKey(const std::string& applicationName) {
    return QelUtils::getRegistryKey(applicationName);
}

// The window that asked for an import hears that it is done.
void tellImported(Platform::WindowHandle owner, Gui::GuiMessage message) {
    if (owner != nullptr) {
        Platform::postWindowMessage(owner, {idOf(message), 0, 0});
    }
}

// Faults and remarks stand in the trace, too. Where nobody asked to be told of faults: a message box.
Surroundings traced(Surroundings surroundings, Trace& trace) {
    std::function<void(const Platform::Fault&)> tellFault = surroundings.reportFault;
    if (!tellFault) {
        tellFault = [](const Platform::Fault& fault) { Platform::showMessageBox(fault.text(), "ERROR"); };
    }
    surroundings.reportFault = [tellFault, &trace](const Platform::Fault& fault) {
        trace.write("fault", fault.text());
        tellFault(fault);
    };
    surroundings.reportRemark = [tell = surroundings.reportRemark, &trace](const std::string& remark) {
        trace.write("remark", remark);
        if (tell) {
            tell(remark);
        }
    };
    return surroundings;
}

} // namespace

QelBackend::QelBackend(const std::string& name, MidiEngine::MidiPlayer& player, bool traceToFile,
                       const Surroundings& surroundings)
    : name_(name), trace_(traceToFile ? surroundings.traceFolder : std::filesystem::path{}),
      surroundings_(traced(surroundings, trace_)), master_("tembrel-backend"), messageManager_(*this, master_),
      engine_(player), ports_(engine_.getMessageManager(), settings_),
      configurations_(*this, surroundings_.applicationData / FolderNames::midiInputPresets, surroundings_.reportFault),
      configurationManager_(configurations_, master_),
      midiInput_(ports_, configurations_, engine_.getMessageManager(), surroundings_.explainInput),
      sequences_(surroundings_.applicationData / FolderNames::sequences, surroundings_.reportFault),
      layers_(engine_.getMessageManager(), sequences_, surroundings_.applicationData / FolderNames::layerPresets,
              surroundings_.reportFault),
      layerManager_(layers_, master_), zones_(engine_.getMessageManager()),
      oscillators_(*this, engine_, surroundings_.applicationData / FolderNames::oscillatorPresets,
                   surroundings_.reportFault, [this] { return oscManager_.tryPostShowValues(); }),
      oscManager_(oscillators_, master_),
      keys_(*this, surroundings_.applicationData / FolderNames::computerInputPresets, surroundings_.reportFault),
      keyManager_(keys_, *this, master_),
      controls_(*this, engine_, surroundings_.applicationData / FolderNames::controlPresets, surroundings_.reportFault,
                [this] { return controlManager_.tryPostTakeIn(); }),
      controlManager_(controls_, *this, master_),
      joysticks_(*this, surroundings_.applicationData / FolderNames::joystickPresets, surroundings_.reportFault),
      joystickManager_(joysticks_, *this, master_),
      programs_(engine_.getMessageManager(),
                {
                    ProgramPart::of(Oscillators::oscillatorsFormat(), oscillators_),
                    ProgramPart::of(Joystick::joystickFormat(), joysticks_),
                    ProgramPart::of(ComputerInput::computerInputFormat(), keys_),
                    ProgramPart::of(MidiInput::midiInputFormat(), configurations_),
                    ProgramPart::of(Controls::controlsFormat(), controls_),
                    ProgramPart::of(Layers::layersFormat(), layers_),
                    ProgramPart::of(Zones::zonesFormat(), zones_),
                },
                surroundings_.reportFault),
      bank_(programs_, surroundings_.reportFault), display_(engine_, surroundings_.milliseconds),
      gui_({*this, engine_, settings_, ports_, sequences_}),
      updates_(gui_.window(), {settings_, ports_, layers_, zones_, keys_, controls_, joysticks_, programs_, bank_,
                               oscillators_, sequences_}) {
    master_.addMessageManager(messageManager_);
    master_.addMessageManager(keyManager_);
    master_.addMessageManager(configurationManager_);
    master_.addMessageManager(controlManager_);
    master_.addMessageManager(joystickManager_);
    master_.addMessageManager(oscManager_);
    master_.addMessageManager(layerManager_);
    master_.setAfterMessage([this] { updates_.look(); });
    master_.start();
}

QelBackend::~QelBackend() = default;

void QelBackend::initialize() {
    settings_.loadFromRegistry(*surroundings_.settings, settingsKey(name_));
    auxiliary_ = std::make_unique<WorkerThread>(
        "tembrel-aux", [] { Platform::writeDebugOutput(std::string(QelUtils::NAME_AND_VERSION) + "\r\n"); },
        [this](const Platform::ThreadMessage& message) {
            if (message.id == tidyUpMessage) {
                FactoryFiles::removeLeftovers(surroundings_);
            }
        });
    auxiliary_->start();
    auxiliary_->post({tidyUpMessage, 0, 0});
    recorder_.start();
    std::error_code failure; // a folder that cannot be made is met again by whoever writes into it
    std::filesystem::create_directories(surroundings_.applicationData / FolderNames::retrospectiveRecord, failure);
    FactoryFiles::copyMissingFolders(surroundings_);
    engine_.initialize(settings_.getDefaultMidiOutput(), settings_.getMidiThru());
    if (settings_.getDefaultBank().empty()) {
        settings_.setDefaultBank(
            Platform::textOf(surroundings_.applicationData / FolderNames::banks / "Default Bank.bnk"));
    }
    bank_.setPath(Platform::pathOf(settings_.getDefaultBank()));
}

void QelBackend::endInitialize() {
    ports_.applySettings();
    programs_.apply(Program{});
    if (surroundings_.startsWithDefaultBank) {
        bank_.load(Platform::pathOf(settings_.getDefaultBank()));
    }
    controls_.sendAutomatically();
    if (surroundings_.openJoysticks) {
        poller_ = std::make_unique<Joystick::JoystickPoller>(
            surroundings_.openJoysticks, joystickManager_,
            Joystick::PollingTime{surroundings_.milliseconds, Platform::sleepMilliseconds});
    }
}

void QelBackend::end() {
    gui_.end();
    joystickManager_.close();
    poller_.reset();
    engine_.end();
    recorder_.end();
    auxiliary_.reset();
    settings_.saveToRegistry(*surroundings_.settings, settingsKey(name_));
}

void QelBackend::processMidiInputEvent(const MidiEngine::QelMidiMessage& message) {
    gui_.received(message);
    midiInput_.process(message);
}

void QelBackend::processMidiInputEvents(const std::vector<MidiEngine::QelMidiMessage>& messages) {
    for (const MidiEngine::QelMidiMessage& message : messages) {
        gui_.received(message);
    }
    midiInput_.process(messages);
}

void QelBackend::joystickAxisChanged(const JoyAxisElementId& axis, int value) {
    gui_.axisMoved(axis, value);
    joysticks_.axisChanged(axis, value);
}

void QelBackend::joystickButtonDown(const JoyButtonElementId& button, bool repeat) {
    gui_.buttonMoved(button, true);
    joysticks_.buttonDown(button, repeat);
}

void QelBackend::joystickButtonUp(const JoyButtonElementId& button) {
    gui_.buttonMoved(button, false);
    joysticks_.buttonUp(button);
}

void QelBackend::loadProgram(const std::string& path) {
    programs_.loadProgram(Platform::pathOf(path));
}

void QelBackend::loadBank(const std::string& path) {
    bank_.load(Platform::pathOf(path));
}

void QelBackend::saveToBank(const std::string& path, Platform::WindowHandle owner) {
    bank_.saveToBank(Platform::pathOf(path), owner);
}

void QelBackend::saveToProgram(const std::string& path, Platform::WindowHandle owner) {
    if (programs_.saveToProgram(Platform::pathOf(path)) && owner != nullptr) {
        Platform::postWindowMessage(owner, {idOf(Gui::GuiMessage::saved), 0, 0});
    }
}

void QelBackend::addSequencePreset(const std::string& name, const std::string& sequence) {
    sequences_.add(name, sequence);
    layers_.sequenceChanged(name);
}

void QelBackend::deleteSequencePreset(const std::string& name) {
    sequences_.remove(name);
    layers_.sequenceChanged(name);
}

bool QelBackend::import(Version2Kind kind, const std::string& source, const std::string& destination) {
    const Platform::Result<Version2Result> imported =
        importVersion2(Platform::pathOf(source), Platform::pathOf(destination), kind);
    if (!imported) {
        surroundings_.reportFault(imported.fault());
        return false;
    }
    if (const auto& notTaken = imported.value().notTaken; !notTaken.empty()) {
        Platform::Fault fault = notTaken.front();
        fault.reason += notTaken.size() > 1 ? "; so are " + std::to_string(notTaken.size() - 1) + " more lines" : "";
        surroundings_.reportFault(fault);
    }
    return true;
}

void QelBackend::importVersion2Bank(const std::string& source, const std::string& destination,
                                    Platform::WindowHandle owner) {
    if (import(Version2Kind::bank, source, destination)) {
        loadBank(destination);
        tellImported(owner, Gui::GuiMessage::bankImported);
    }
}

void QelBackend::importVersion2Program(const std::string& source, const std::string& destination,
                                       Platform::WindowHandle owner) {
    if (import(Version2Kind::program, source, destination)) {
        loadProgram(destination);
        tellImported(owner, Gui::GuiMessage::programImported);
    }
}

void QelBackend::importVersion2Preset(const std::string& source, const std::string& destination,
                                      Platform::WindowHandle owner) {
    if (import(Version2Kind::preset, source, destination)) {
        tellImported(owner, Gui::GuiMessage::presetImported);
    }
}

void QelBackend::executeFunction(const std::string& xml) {
    if (const Platform::Outcome done = FunctionManagement::executeFunction(xml, *this); !done) {
        surroundings_.reportFault(done.fault());
    }
}

void QelBackend::executeTranslation(const std::string& xml, const MidiEngine::QelMidiMessage& incoming) {
    auto read = MidiInput::TranslationManagement::readTranslation(xml);
    if (!read) {
        surroundings_.reportFault(read.fault());
        return;
    }
    auto& translation = *read.value();
    const MidiEngine::QelMidiMessage handled = MidiInput::asHandled(incoming);
    translation.setQel(this);
    if (translation.getCondition().holdsFor(handled.getMidiMessage())) {
        translation.execute(handled);
    }
}

void QelBackend::setMidiInputPorts(const std::vector<MidiInputPort>& ports) {
    ports_.setInputs(ports);
    midiInput_.inputsChanged();
}

void QelBackend::changeMidiThru(const OnOffToggle& how, bool) {
    settings_.setMidiThru(how.applyTo(settings_.getMidiThru()));
    engine_.getMessageManager().postSetMidiThru(settings_.getMidiThru());
}

void QelBackend::changeGlobalKeyboard(const OnOffToggle& how, bool) {
    settings_.setGlobalKeyboard(how.applyTo(settings_.getGlobalKeyboard()));
}

void QelBackend::publishStatus() {
    QelStatus status{programs_.name(), bank_.slot(), std::nullopt, std::nullopt, programs_.tempo()};
    if (const Zones::Zone* const zone = zones_.zones().selected()) {
        int selected = 0;
        zones_.zones().forEach([&](const Zones::Zone& each) { selected += each.selected ? 1 : 0; });
        status.zone = {zone->id, zone->transpose, selected};
    }
    const auto& selection = controls_.selection();
    if (!selection.empty()) {
        if (const Controls::Control* const control = controls_.map().find(*selection.begin())) {
            status.control = {control->cell, control->name, control->value, static_cast<int>(selection.size())};
        }
    }
    const std::lock_guard lock(statusMutex_);
    status_ = std::move(status);
}

QelStatus QelBackend::getStatus() const {
    const std::lock_guard lock(statusMutex_);
    return status_;
}

} // namespace Backend
