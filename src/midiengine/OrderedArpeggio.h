// The held notes one after the other.
#pragma once

#include "midiengine/Arpeggio.h"
#include "midiengine/ArpeggioNote.h"

#include <vector>

namespace Backend::ArpeggioManagement::Arpeggios {

// A note is held once, however often it is pressed. The sequence moves on each time that all held notes have been
// passed through.
class OrderedArpeggio : public Arpeggio {
public:
    void take(const MidiEngine::QelMidiMessage& event, SequenceManagement::SequencePlayer& steps) override;
    void process(const ArpeggioBeat& beat, SequenceManagement::SequencePlayer& steps,
                 SequenceManagement::NoteSink& sink) override;
    [[nodiscard]] bool isRunning() const override { return !held_.empty(); }
    void reset() override;
    void pause(SequenceManagement::SequencePlayer& steps) override;
    void continueFrom(const Arpeggio& other) override;
    void forgetOutput(std::int8_t output, SequenceManagement::SequencePlayer& steps) override;

protected:
    explicit OrderedArpeggio(const ArpeggioSetting& setting);

    // A place among the held notes, from the lowest, 0, up to `count` - 1.
    struct Move {
        int place = 0;
        bool passed = false; // all notes have been passed through
    };
    // The place of the first note of all.
    [[nodiscard]] virtual int firstPlace(int count) const = 0;
    // From a place to the next one to be played.
    [[nodiscard]] virtual Move next(int place, int count) = 0;
    // Back to how it was made.
    virtual void resetDirection() {}
    virtual void takeDirection(const OrderedArpeggio&) {}

private:
    [[nodiscard]] std::vector<ArpeggioNote>::iterator find(std::int8_t note);
    [[nodiscard]] int count() const { return static_cast<int>(held_.size()); }
    void remove(int place, SequenceManagement::SequencePlayer& steps);
    void endCurrent(SequenceManagement::SequencePlayer& steps, SequenceManagement::NoteSink& sink);
    void moveOn(SequenceManagement::SequencePlayer& steps);
    void chooseFirst();

    std::vector<ArpeggioNote> held_; // ascending, each note once
    int cursor_ = none;              // the note that plays or is to be played next
    int resumeNote_ = none;          // where to go on after a pause

    static constexpr int none = -1;
};

class UpArpeggio final : public OrderedArpeggio {
public:
    explicit UpArpeggio(const ArpeggioSetting& setting) : OrderedArpeggio(setting) {}

private:
    [[nodiscard]] int firstPlace(int) const override { return 0; }
    [[nodiscard]] Move next(int place, int count) override;
};

class DownArpeggio final : public OrderedArpeggio {
public:
    explicit DownArpeggio(const ArpeggioSetting& setting) : OrderedArpeggio(setting) {}

private:
    [[nodiscard]] int firstPlace(int count) const override { return count - 1; }
    [[nodiscard]] Move next(int place, int count) override;
};

// Turns when it leaves an end, so that the end notes are not repeated; a new pass begins with the lowest note.
class UpDownArpeggio final : public OrderedArpeggio {
public:
    explicit UpDownArpeggio(const ArpeggioSetting& setting) : OrderedArpeggio(setting) {}

private:
    [[nodiscard]] int firstPlace(int) const override { return 0; }
    [[nodiscard]] Move next(int place, int count) override;
    void resetDirection() override { up_ = true; }
    void takeDirection(const OrderedArpeggio& other) override { up_ = static_cast<const UpDownArpeggio&>(other).up_; }

    bool up_ = true;
};

} // namespace Backend::ArpeggioManagement::Arpeggios
