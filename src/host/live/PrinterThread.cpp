#include "host/live/PrinterThread.h"

#include <utility>

namespace Host {

PrinterThread::PrinterThread(std::FILE* file, std::string name, std::function<void(std::string&)> take)
    : file_(file), take_(std::move(take)), thread_([this, name = std::move(name)] {
          Platform::setCurrentThreadName(name.c_str());
          work();
      }) {
    thread_.resume();
}

PrinterThread::~PrinterThread() {
    stopping_.store(true);
    wake_.signal();
    thread_.join();
}

void PrinterThread::work() {
    std::string text;
    for (bool last = false; !last;) {
        last = stopping_.load(); // what was put by before the stop is still written
        take_(text);
        if (text.empty()) {
            if (!last) {
                wake_.wait();
            }
            continue;
        }
        last = false;
        const bool written = std::fwrite(text.data(), 1, text.size(), file_) == text.size();
        if (!written || std::fflush(file_) != 0) {
            good_.store(false, std::memory_order_relaxed);
        }
        text.clear();
        written_.fetch_add(1, std::memory_order_relaxed);
    }
}

} // namespace Host
