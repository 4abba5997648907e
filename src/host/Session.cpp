#include "host/Session.h"

#include "backend/QelFactory.h"
#include "core/Barrier.h"
#include "core/MessageManagerMaster.h"
#include "core/QelMessageManager.h"
#include "core/QelUtils.h"
#include "core/Surroundings.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <utility>

namespace Host {

using Platform::Fault;

Session::Session(Backend::MidiEngine::MidiPlayer& player, const SessionOptions& options)
    : player_(player), options_(options) {}

Session::~Session() {
    end();
}

void Session::end() {
    if (qel_ && !std::exchange(ended_, true)) {
        qel_->getQelMessageManager().sendEnd();
        qel_->getMessageManagerMaster().stop();
    }
}

Platform::Outcome Session::start(const std::vector<Backend::MidiInputPort>& inputs,
                                 const std::vector<Backend::MidiOutputPort>& outputs) {
    auto surroundings =
        options_.data ? Backend::Surroundings::inFolder(*options_.data) : Backend::Surroundings::ofSystem();
    surroundings.reportFault = [this](const Fault& fault) {
        const std::lock_guard lock(faultMutex_);
        faults_.push_back(fault);
    };
    surroundings.reportRemark = [this](const std::string& remark) {
        const std::lock_guard lock(faultMutex_);
        remarks_.push_back(remark);
    };
    surroundings.records = options_.records;
    surroundings.explainInput = options_.explainInput;
    if (options_.joysticks) {
        surroundings.openJoysticks = Platform::openJoysticks;
    }
    surroundings.installation = Backend::Surroundings::ownInstallation();
    surroundings.startsWithDefaultBank = options_.defaultBank && !options_.bank;
    qel_ = Backend::QelFactory::createQel(Backend::QelUtils::APPLICATION_NAME, player_, true, surroundings);
    auto& backend = qel_->getQelMessageManager();
    backend.sendInitialize();
    backend.sendSetMidiInputPorts(inputs);
    backend.sendSetMidiOutputPorts(outputs);
    backend.sendEndInitialize();
    std::vector<Fault> harmless = takeFaults();
    load();
    waitForBackend();
    const std::vector<Fault> faults = takeFaults();
    if (!faults.empty()) {
        return faults.front();
    }
    if (const std::optional<Fault> wrong = wrongSlot()) {
        return *wrong;
    }
    const std::lock_guard lock(faultMutex_);
    faults_ = std::move(harmless);
    return Platform::success();
}

std::optional<Fault> Session::wrongSlot() {
    if (!options_.slot || qel_->getStatus().slot == *options_.slot) {
        return std::nullopt;
    }
    return Fault{options_.bank.value_or("default bank"), 0, "there is no slot " + std::to_string(*options_.slot)};
}

std::vector<Fault> Session::takeFaults() {
    const std::lock_guard lock(faultMutex_);
    return std::exchange(faults_, {});
}

std::vector<std::string> Session::takeRemarks() {
    const std::lock_guard lock(faultMutex_);
    return std::exchange(remarks_, {});
}

void Session::load() {
    auto& backend = qel_->getQelMessageManager();
    if (options_.bank) {
        backend.postLoadBank(*options_.bank);
    }
    if (options_.slot) {
        backend.postChangeProgram(SelectType::fixed(*options_.slot));
    }
    if (options_.program) {
        backend.postLoadProgram(*options_.program);
    }
    backend.postPublishStatus();
    if (options_.tempo) {
        backend.postChangeTempo(RelativeFixedValue::fixed(*options_.tempo), true);
    }
}

void Session::waitForBackend() {
    Backend::Barrier barrier;
    if (qel_->getQelMessageManager().postBarrier(barrier)) {
        barrier.wait();
    }
}

} // namespace Host
