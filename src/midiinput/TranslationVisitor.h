// Tells translations apart by class.
#pragma once

#include "input/ActionVisitor.h"

#include <cstddef>

namespace Backend::MidiInput::TranslationManagement {

template <std::size_t LINE> class TranslationOf;

// One operation visit(const Translations::ShowHelp&) ... for each class of translations; those that are not overridden
// do nothing.
class TranslationVisitor : public Actions::ActionVisitor<TranslationOf> {};

} // namespace Backend::MidiInput::TranslationManagement
