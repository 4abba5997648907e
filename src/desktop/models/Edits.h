// Everything that a user edits, in one list that can be undone and redone.
#pragma once

#include <QString>
#include <QUndoStack>
#include <functional>
#include <utility>

namespace Desktop {

// [gui]
class Edits final : public QUndoStack {
public:
    // Applies `after` now and whenever it is redone, `before` when it is undone. Edits with the same `key`, which is
    // not 0, that follow each other at once (one drag, one turn of the wheel) become one.
    template <typename Value>
    void edit(const QString& text, Value before, Value after, std::function<void(const Value&)> apply, int key = 0) {
        if (before == after) {
            return;
        }
        push(new Edit<Value>(text, std::move(before), std::move(after), std::move(apply), key));
    }
    // An edit whose result is not known beforehand: `work` now and whenever it is redone.
    void perform(const QString& text, std::function<void()> work, std::function<void()> undo) {
        push(new Work(text, std::move(work), std::move(undo)));
    }
    // What follows is no part of the edit before, whatever its key.
    void endOfGesture() { ++gesture_; }
    // What `work` edits is no part of a gesture: a menu, a box, a button.
    template <typename Work> void alone(Work work) {
        endOfGesture();
        work();
        endOfGesture();
    }

private:
    template <typename Value> class Edit final : public QUndoCommand {
    public:
        Edit(const QString& text, Value before, Value after, std::function<void(const Value&)> apply, int key)
            : QUndoCommand(text), before_(std::move(before)), after_(std::move(after)), apply_(std::move(apply)),
              key_(key) {}
        void undo() override { apply_(before_); }
        void redo() override { apply_(after_); }
        [[nodiscard]] int id() const override { return key_ == 0 ? -1 : key_; }
        bool mergeWith(const QUndoCommand* other) override {
            const auto* const next = dynamic_cast<const Edit*>(other);
            if (next == nullptr) {
                return false;
            }
            after_ = next->after_;
            setObsolete(before_ == after_); // dragged and brought back
            return true;
        }

    private:
        Value before_;
        Value after_;
        std::function<void(const Value&)> apply_;
        int key_;
    };

    class Work final : public QUndoCommand {
    public:
        Work(const QString& text, std::function<void()> work, std::function<void()> undo)
            : QUndoCommand(text), work_(std::move(work)), undo_(std::move(undo)) {}
        void undo() override { undo_(); }
        void redo() override { work_(); }

    private:
        std::function<void()> work_;
        std::function<void()> undo_;
    };

    int gesture_ = 0;

public:
    // A key for edits of the same kind within one gesture.
    [[nodiscard]] int keyFor(int kind) const { return kind * 65536 + gesture_ % 65535 + 1; }
};

} // namespace Desktop
