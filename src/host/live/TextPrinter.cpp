#include "host/live/TextPrinter.h"

#include <utility>

namespace Host {

TextPrinter::TextPrinter(std::FILE* file, std::string beforeText) : file_(file), beforeText_(std::move(beforeText)) {
    thread_ = std::make_unique<Platform::Thread>([this] {
        Platform::setCurrentThreadName("texts");
        work();
    });
    thread_->resume();
}

TextPrinter::~TextPrinter() {
    stopping_.store(true);
    wake_.signal();
    thread_->join();
}

void TextPrinter::print(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (waiting_.size() + beforeText_.size() + text.size() > room) {
        dropped_.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    waiting_ += beforeText_ + text;
    wake_.signal();
}

void TextPrinter::work() {
    for (bool last = false; !last;) {
        last = stopping_.load(); // what was given before the stop is still written
        std::string text;
        {
            const std::lock_guard lock(mutex_);
            text.swap(waiting_);
        }
        if (!text.empty()) {
            static_cast<void>(std::fwrite(text.data(), 1, text.size(), file_));
            static_cast<void>(std::fflush(file_));
            written_.fetch_add(1, std::memory_order_relaxed);
        } else if (!last) {
            wake_.wait();
        }
    }
}

} // namespace Host
