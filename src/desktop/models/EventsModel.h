// The list of what came in and what went out.
#pragma once

#include "desktop/models/Model.h"
#include "midiengine/DisplayListener.h"
#include "values/QelMidiMessage.h"

#include <QElapsedTimer>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <set>
#include <vector>

namespace Desktop {

class Models;

struct ListedEvent {
    Backend::MidiEngine::MidiMessage message;
    std::int8_t port = -1;  // output, or input of an incoming one
    std::int8_t input = -1; // where it came from; -1: from no MIDI input
    std::int8_t zone = -1;
    std::int16_t layer = -1; // the place of the layer that sent it
    bool incoming = false;
    std::uint32_t milliseconds = 0; // since the list began
};

// Takes events from the display thread and from the window's messages, and hands them on once a frame.
class EventsModel final : public Model, private Backend::Display::DisplayListener {
    Q_OBJECT

public:
    static constexpr std::size_t capacity = 10000;

    explicit EventsModel(Models& models);
    ~EventsModel() override;
    EventsModel(const EventsModel&) = delete;
    EventsModel& operator=(const EventsModel&) = delete;

    // From here on it listens, to the end. Costs nothing while nothing plays.
    void start();
    void stop();

    // The last `capacity` events, oldest first; taken in by drain().
    [[nodiscard]] const std::deque<ListedEvent>& events() const { return events_; }
    [[nodiscard]] QString nameOf(const ListedEvent& event) const;
    [[nodiscard]] QString portOf(const ListedEvent& event) const;
    [[nodiscard]] QString wayOf(const ListedEvent& event) const; // input → zone → layer → output
    [[nodiscard]] QString valueOf(const ListedEvent& event) const;
    [[nodiscard]] static QString timeOf(const ListedEvent& event);

    void addReceived(const Backend::MidiEngine::QelMidiMessage& message);
    // Takes in what has come since the last call; once a frame. True when there was anything.
    bool drain();
    void clear();

    // What is listed, beside what the settings say of incoming and outgoing events. What is hidden is taken off the
    // list and does not come back to it.
    enum class Kind { notes, controllers, pitchBend, pressure, programs, system };
    [[nodiscard]] static Kind kindOf(const ListedEvent& event);
    [[nodiscard]] bool isHidden(Kind kind) const { return hidden_.contains(kind); }
    void setHidden(Kind kind, bool on);
    // Only those of one port, by its name; empty: of all.
    [[nodiscard]] const QString& onlyPort() const { return onlyPort_; }
    void setOnlyPort(const QString& name);

signals:
    void added(int count);

private:
    void messageSent(const Backend::Display::DisplayRecord& record) override;

    Models& models_;
    std::deque<ListedEvent> events_;
    std::mutex mutex_;
    std::vector<ListedEvent> waiting_; // under the mutex
    std::vector<ListedEvent> taken_;
    [[nodiscard]] bool shows(const ListedEvent& event) const;
    void sift();

    std::set<Kind> hidden_;
    QString onlyPort_;
    bool listening_ = false;
    QElapsedTimer clock_;
};

} // namespace Desktop
