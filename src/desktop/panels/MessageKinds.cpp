#include "desktop/panels/MessageKinds.h"

namespace Desktop {

using Backend::MidiEngine::MessageType;

namespace {

void addKind(QComboBox& box, MessageType type) {
    box.addItem(isKnown(type) ? QString::fromStdString(eventName(type)) : QObject::tr("nothing"),
                static_cast<int>(type));
}

} // namespace

void addMessageKinds(QComboBox& box, OfKinds which) {
    const int last = which == OfKinds::all ? 0xFF : 0xEF;
    for (int status = 0x80; status <= last; status += status < 0xF0 ? 0x10 : 1) {
        const auto type = static_cast<MessageType>(status);
        if (isKnown(type) && type != MessageType::systemExclusive && type != MessageType::endOfSysex) {
            addKind(box, type);
        }
    }
}

void showMessageKind(QComboBox& box, MessageType type) {
    int place = box.findData(static_cast<int>(type));
    if (place < 0) {
        place = box.count();
        addKind(box, type);
    }
    box.setCurrentIndex(place);
}

MessageType messageKindOf(const QComboBox& box) {
    return static_cast<MessageType>(box.currentData().toInt());
}

} // namespace Desktop
