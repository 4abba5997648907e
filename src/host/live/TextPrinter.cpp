#include "host/live/TextPrinter.h"

#include <utility>

namespace Host {

TextPrinter::TextPrinter(std::FILE* file, std::string beforeText)
    : beforeText_(std::move(beforeText)), thread_(file, "texts", [this](std::string& text) {
          const std::lock_guard lock(mutex_);
          text.swap(waiting_);
      }) {}

void TextPrinter::print(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (waiting_.size() + beforeText_.size() + text.size() > room) {
        dropped_.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    waiting_ += beforeText_ + text;
    thread_.tell();
}

} // namespace Host
