#include "backend/RecorderSection.h"

#include "core/FolderNames.h"
#include "midiengine/MidiEngine.h"
#include "platform/AutoResetEvent.h"
#include "platform/Notices.h"
#include "platform/PathText.h"

#include <algorithm>
#include <utility>

namespace Backend {

using Platform::Fault;
using Platform::Result;
using Recording::SavedRecord;

namespace {

constexpr std::uint32_t wakeMessage = WorkerThread::STOP_MESSAGE + 1; // something has been played
constexpr std::uint32_t lookMessage = WorkerThread::STOP_MESSAGE + 2; // the thread's own, to look again
constexpr std::uint32_t workMessage = WorkerThread::STOP_MESSAGE + 3; // wParam: a Work

constexpr unsigned betweenLooks = 10;        // milliseconds
constexpr std::uint32_t betweenTries = 1000; // milliseconds
constexpr int mostOlderFiles = 9999;

struct Work {
    const std::function<void()>& what;
    Platform::AutoResetEvent done{};
};

} // namespace

RecorderSection::RecorderSection(MidiEngine::MidiEngine& engine, RegistrySettings& settings,
                                 const Surroundings& surroundings)
    : engine_(engine), settings_(settings), surroundings_(surroundings),
      remark_(surroundings.reportRemark ? surroundings.reportRemark
                                        : [](const std::string& text) { Platform::writeDebugOutput(text); }) {}

std::filesystem::path RecorderSection::folderOf(const RegistrySettings& settings, const Surroundings& surroundings) {
    return settings.getMidiBufferDir().empty() ? surroundings.applicationData / FolderNames::retrospectiveRecord
                                               : Platform::pathOf(settings.getMidiBufferDir());
}

void RecorderSection::start() {
    buffers_ = folderOf(settings_, surroundings_);
    limits_ = limits();
    {
        const std::lock_guard lock(threadMutex_);
        thread_ = std::make_unique<WorkerThread>(
            "tembrel-record", [] {}, [this](const Platform::ThreadMessage& message) { handle(message); });
        thread_->start();
    }
    listen(settings_.isRetroRecordEnabled());
}

void RecorderSection::end() {
    if (std::exchange(tapped_, false)) {
        engine_.removeTap(*this);
    }
    const std::lock_guard lock(threadMutex_);
    if (!thread_) {
        return;
    }
    thread_->stop();
    thread_.reset();
    if (writer_) {
        writeMessages();
        writer_->close();
    }
    writer_.reset();
    folder_.reset();
}

void RecorderSection::enable(bool on) {
    settings_.setRetroRecordEnabled(on);
    listen(on);
}

void RecorderSection::listen(bool on) {
    const bool wanted = on && surroundings_.records && thread_;
    if (wanted == tapped_) {
        return;
    }
    tapped_ = wanted;
    if (!wanted) {
        engine_.removeTap(*this);
        return;
    }
    if (!queue_) {
        const std::lock_guard lock(threadMutex_);
        queue_ = std::make_unique<Recording::RecordQueue>([this] { return thread_->tryPost({wakeMessage, 0, 0}); });
    }
    onThread([this] { writeMessages(); }); // what the last program left is put aside
    engine_.addTap(*this, MidiEngine::TapKind::sent);
}

void RecorderSection::setOlderFiles(int files) {
    settings_.setRetroRecordBufferSize(files);
    const Recording::RecordLimits changed = limits();
    onThread([this, changed] {
        limits_ = changed;
        if (writer_) {
            writer_->setLimits(changed);
        }
    });
}

Recording::RecordLimits RecorderSection::limits() const {
    return {static_cast<std::uint32_t>(std::max(settings_.getMaxMidiBufferFileSize(), 0)),
            static_cast<std::uint32_t>(std::clamp(settings_.getRetroRecordBufferSize(), 0, mostOlderFiles))};
}

// RetroRecord. ---------------------------------------------------------------------------------------------------

std::filesystem::path RecorderSection::folder() {
    std::filesystem::path folder;
    onThread([this, &folder] {
        if (writer_) {
            folder = writer_->folder();
        }
    });
    return folder;
}

std::vector<Recording::Take> RecorderSection::takes() {
    std::vector<Recording::Take> takes;
    onThread([this, &takes] {
        if (writer_) {
            writeMessages();
            takes = writer_->takes();
        }
    });
    return takes;
}

Result<SavedRecord> RecorderSection::save(const std::filesystem::path& target, std::optional<int> fromLast) {
    Result<SavedRecord> result = Fault{"", 0, "nothing is recorded"};
    onThread([&] {
        if (writer_) {
            writeMessages();
            result = writer_->save(target, fromLast);
        }
    });
    return result;
}

std::uint64_t RecorderSection::missed() {
    const std::lock_guard lock(threadMutex_);
    return missed_.load(std::memory_order_relaxed) + (queue_ ? queue_->dropped() : 0);
}

bool RecorderSection::onThread(const std::function<void()>& what) {
    const std::lock_guard lock(threadMutex_);
    if (!thread_) {
        return false;
    }
    Work work{what};
    thread_->post({workMessage, reinterpret_cast<std::uintptr_t>(&work), 0});
    work.done.wait();
    return true;
}

// The clock. -----------------------------------------------------------------------------------------------------

void RecorderSection::passed(const MidiEngine::QelMidiMessage& message, bool) {
    // What is played in one slice is played at one moment: the clock is read once.
    if (const std::uint32_t slice = engine_.sliceNumber(); slice != stampedSlice_ || slice == 0) {
        stampedSlice_ = slice;
        stamp_ = surroundings_.milliseconds();
    }
    queue_->push(Recording::PlayedMessage::of(message, stamp_));
}

// The recorder's thread. -----------------------------------------------------------------------------------------

void RecorderSection::handle(const Platform::ThreadMessage& message) {
    if (message.id == workMessage) {
        Work& work = *reinterpret_cast<Work*>(message.wParam);
        work.what();
        work.done.signal();
    } else if (message.id == lookMessage || (message.id == wakeMessage && !std::exchange(looking_, true))) {
        lookForMessages();
    }
}

// Looks again and again, with pauses in which others have their turn, until twice there was nothing. What is pushed at
// the moment of parking may not wake, but every processor sees it by the second look.
void RecorderSection::lookForMessages() {
    if (!queue_->isEmpty()) {
        queue_->unpark();
        parked_ = false;
        writeMessages();
    } else if (!std::exchange(parked_, true)) {
        queue_->park();
    } else {
        looking_ = false;
        return;
    }
    Platform::sleepMilliseconds(betweenLooks);
    if (!thread_->tryPost({lookMessage, 0, 0})) {
        looking_ = false;
        queue_->park();
    }
}

void RecorderSection::openFolder() {
    const std::uint32_t now = surroundings_.milliseconds();
    if (saidThatThereIsNoFolder_ && now - triedAt_ < betweenTries) {
        return;
    }
    triedAt_ = now;
    folder_ = Recording::RecordFolder::claim(buffers_);
    if (!folder_) {
        if (!std::exchange(saidThatThereIsNoFolder_, true)) {
            remark_("the record pauses: " + Platform::textOf(buffers_) + " cannot be used");
        }
        return;
    }
    writer_ = std::make_unique<Recording::RecordWriter>(
        folder_->path(), limits_, Recording::RecordClocks{surroundings_.milliseconds, surroundings_.calendar}, remark_);
    if (std::exchange(saidThatThereIsNoFolder_, false)) {
        remark_("the record goes on");
    }
}

void RecorderSection::writeMessages() {
    if (!queue_) {
        return;
    }
    if (!writer_) {
        openFolder();
    }
    if (writer_) {
        writer_->resume(surroundings_.milliseconds());
    }
    for (Recording::PlayedMessage message; queue_->pop(message);) {
        if (writer_) {
            writer_->record(message);
        } else {
            ++missedWithoutFolder_;
        }
    }
    if (writer_) {
        writer_->flush(surroundings_.milliseconds());
    }
    missed_.store(missedWithoutFolder_ + (writer_ ? writer_->missed() : 0), std::memory_order_relaxed);
    if (queue_->dropped() > 0 && !std::exchange(saidThatItIsTooSlow_, true)) {
        remark_("the record misses messages: they come faster than the disk takes them");
    }
}

} // namespace Backend
