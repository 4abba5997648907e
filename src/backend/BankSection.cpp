#include "backend/BankSection.h"

#include "backend/BankText.h"
#include "backend/ProgramXml.h"
#include "backend/Selection.h"
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

namespace {

Result<BankText> readBankText(const std::filesystem::path& file) {
    Result<std::string> text = Platform::readWholeFile(file, Platform::maxXmlBytes);
    return text ? BankText::of(std::move(text.value()), Platform::textOf(file)) : text.fault();
}

} // namespace

Outcome BankSection::takeIn(const std::string& text) {
    Result<std::vector<Program>> bank = readBank(text, Platform::textOf(path_));
    if (!bank) {
        return bank.fault();
    }
    bank_ = std::move(bank.value());
    ++revision_;
    return Platform::success();
}

void BankSection::load(const std::filesystem::path& file) {
    const Result<std::string> text = Platform::readWholeFile(file, Platform::maxXmlBytes);
    Result<std::vector<Program>> bank =
        text ? readBank(text.value(), Platform::textOf(file)) : Result<std::vector<Program>>(text.fault());
    if (!bank) {
        reportFault_(bank.fault());
        return;
    }
    path_ = file;
    bank_ = std::move(bank.value());
    ++revision_;
    slot_ = 0;
    programs_.apply(bank_.front());
}

std::vector<std::string> BankSection::names() const {
    std::vector<std::string> names;
    for (const Program& program : bank_) {
        names.push_back(program.name);
    }
    return names;
}

void BankSection::changeProgram(const SelectType& which) {
    const int slot = selectedPlace(which, slot_, size());
    if (slot != slot_ && slot < size()) {
        slot_ = slot;
        programs_.apply(bank_[static_cast<std::size_t>(slot)]);
    }
}

void BankSection::saveToCurrentBank(int slot, Platform::WindowHandle owner) {
    if (slot < 0 || path_.empty()) {
        return;
    }
    if (const Outcome saved = save(path_, slot); !saved) {
        reportFault_(saved.fault());
    } else if (owner != nullptr) {
        Platform::postWindowMessage(owner, {savedToBankMessage, 0, 0});
    }
}

void BankSection::saveToBank(const std::filesystem::path& file, Platform::WindowHandle owner) {
    if (path_.empty()) {
        return;
    }
    if (const Outcome saved = save(file, slot_); !saved) {
        reportFault_(saved.fault());
    } else if (owner != nullptr) {
        Platform::postWindowMessage(owner, {savedToBankMessage, 0, 0});
    }
}

Outcome BankSection::save(const std::filesystem::path& target, int slot) {
    const Result<BankText> bank = readBankText(path_);
    if (!bank) {
        return bank.fault();
    }
    std::ostringstream program;
    programs_.write(program, 0, true);
    const Result<BankText> changed = bank.value().withProgram(static_cast<std::size_t>(slot), program.str());
    if (!changed) {
        return changed.fault();
    }
    if (const Outcome written = Platform::replaceFile(target, changed.value().text()); !written) {
        return written;
    }
    std::error_code unknown;
    return target == path_ || std::filesystem::equivalent(target, path_, unknown) ? takeIn(changed.value().text())
                                                                                  : Platform::success();
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
    const Result<BankText> bank = readBankText(path_);
    if (!bank) {
        return bank.fault();
    }
    const Result<BankText> changed = bank.value().withSize(static_cast<std::size_t>(newSize));
    if (!changed) {
        return changed.fault();
    }
    const Outcome written = Platform::replaceFile(path_, changed.value().text());
    return written ? takeIn(changed.value().text()) : written;
}

} // namespace Backend
