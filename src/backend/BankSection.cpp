#include "backend/BankSection.h"

#include "backend/ProgramXml.h"
#include "backend/Selection.h"
#include "gui/GuiMessages.h"
#include "platform/ChangeLock.h"
#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "platform/XmlDocument.h"

#include <algorithm>
#include <sstream>
#include <system_error>
#include <utility>

namespace Backend {

using Platform::Outcome;
using Platform::Result;

Result<BankText> BankSection::asItIs() const {
    std::error_code unknown;
    if (bank_ && std::filesystem::status(path_, unknown).type() == std::filesystem::file_type::not_found) {
        return *bank_;
    }
    Result<std::string> text = Platform::readWholeFile(path_, Platform::maxXmlBytes);
    if (!text) {
        return text.fault();
    }
    // What has been looked at once is not looked at again.
    return bank_ && bank_->text() == text.value() ? Result<BankText>(*bank_)
                                                  : BankText::of(std::move(text.value()), Platform::textOf(path_));
}

void BankSection::takeIn(BankText bank) {
    names_.clear();
    for (std::size_t slot = 0; slot < bank.size(); ++slot) {
        names_.push_back(bank.programName(slot));
    }
    bank_ = std::move(bank);
    ++revision_;
}

void BankSection::applySlot() {
    const Result<Platform::XmlElement> program =
        Platform::parseXml(bank_->program(static_cast<std::size_t>(slot_)), Platform::textOf(path_));
    program ? programs_.apply(readProgram(program.value())) : reportFault_(program.fault());
}

void BankSection::load(const std::filesystem::path& file) {
    Result<std::string> text = Platform::readWholeFile(file, Platform::maxXmlBytes);
    Result<BankText> bank = text ? BankText::of(std::move(text.value()), Platform::textOf(file)) : text.fault();
    if (!bank) {
        reportFault_(bank.fault());
        return;
    }
    path_ = file;
    takeIn(std::move(bank.value()));
    slot_ = 0;
    applySlot();
}

void BankSection::changeProgram(const SelectType& which) {
    const int slot = selectedPlace(which, slot_, size());
    if (slot != slot_ && slot < size()) {
        slot_ = slot;
        applySlot();
    }
}

void BankSection::saveToCurrentBank(int slot, Platform::WindowHandle owner) {
    if (slot < 0 || path_.empty()) {
        return;
    }
    if (const Outcome saved = save(path_, slot); !saved) {
        reportFault_(saved.fault());
    } else if (owner != nullptr) {
        Platform::postWindowMessage(owner, {idOf(Gui::GuiMessage::saved), 0, 0});
    }
}

void BankSection::saveToBank(const std::filesystem::path& file, Platform::WindowHandle owner) {
    if (path_.empty()) {
        return;
    }
    if (const Outcome saved = save(file, slot_); !saved) {
        reportFault_(saved.fault());
    } else if (owner != nullptr) {
        Platform::postWindowMessage(owner, {idOf(Gui::GuiMessage::saved), 0, 0});
    }
}

Outcome BankSection::save(const std::filesystem::path& target, int slot) {
    const Platform::ChangeLock alone(target);
    if (const Outcome state = alone.state(); !state) {
        return state;
    }
    const Result<BankText> bank = asItIs();
    if (!bank) {
        return bank.fault();
    }
    std::ostringstream program;
    programs_.write(program, 0, true);
    Result<BankText> changed = bank.value().withProgram(static_cast<std::size_t>(slot), program.str());
    if (!changed) {
        return changed.fault();
    }
    std::error_code unknown;
    if (target == path_ || std::filesystem::equivalent(target, path_, unknown)) {
        return write(std::move(changed.value()));
    }
    return Platform::replaceFile(target, changed.value().text());
}

Outcome BankSection::write(BankText changed) {
    // Not the folders above it: they may be a drive that has been taken away.
    std::error_code shownByTheWrite;
    std::filesystem::create_directory(path_.parent_path(), shownByTheWrite);
    Outcome written = Platform::replaceFile(path_, changed.text());
    if (written) {
        takeIn(std::move(changed));
    }
    return written;
}

void BankSection::changeSize(int newSize) {
    if (newSize == size() || newSize < 1) {
        return;
    }
    if (slot_ >= newSize) {
        changeProgram(SelectType::fixed(newSize - 1));
    }
    if (const Outcome resized = resize(newSize); !resized) {
        reportFault_(resized.fault());
    }
}

Outcome BankSection::resize(int newSize) {
    const Platform::ChangeLock alone(path_);
    if (const Outcome state = alone.state(); !state) {
        return state;
    }
    const Result<BankText> bank = asItIs();
    if (!bank) {
        return bank.fault();
    }
    Result<BankText> changed = bank.value().withSize(static_cast<std::size_t>(newSize));
    if (!changed) {
        return changed.fault();
    }
    return write(std::move(changed.value()));
}

} // namespace Backend
