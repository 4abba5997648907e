// The door of a section that has presets: the messages that every such section knows.
#pragma once

#include "core/MessageManager.h"
#include "core/MessageManagerMaster.h"
#include "core/MessageParameters.h"

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

namespace Backend {

// `Content` is what a preset holds, `Selection` says what of the section is saved. A subclass numbers its messages by
// an enumeration of its own, in which storePreset, deletePreset and savePreset follow each other.
//
// Posts come back at once and try again every 10 ms until the queue takes them; their order is kept. For any thread
// but the backend's own.
template <typename Content, typename Selection> class PresetMessageManager : public MessageManager {
public:
    [[nodiscard]] bool wantMessage(std::uint32_t id) const final { return id >= first_ && id <= last_; }

    void postStorePreset(std::string name, Content content) {
        postValue(storePreset_, Named<Content>{std::move(name), std::move(content)});
    }
    void postDeletePreset(std::string name) { postValue(storePreset_ + 1, std::move(name)); }
    // An empty selection saves all.
    void postSavePreset(std::string name, Selection selection) {
        postValue(storePreset_ + 2, Named<Selection>{std::move(name), std::move(selection)});
    }

protected:
    template <typename Message>
    PresetMessageManager(MessageManagerMaster& master, Message first, Message last, Message storePreset)
        : MessageManager(master), first_(idOf(first)), last_(idOf(last)), storePreset_(idOf(storePreset)) {}

    template <typename Message> bool post(Message message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0) {
        return MessageManager::post(idOf(message), wParam, lParam);
    }
    // One try. [any]
    template <typename Message>
    [[nodiscard]] bool tryPost(Message message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0) noexcept {
        return getMaster().tryPostMessage(idOf(message), wParam, lParam);
    }
    // The handler takes the copy back (takeCopy).
    template <typename Message, typename Value> void postValue(Message message, Value&& value) {
        postCopy(std::forward<Value>(value), [&](std::uintptr_t copy) { return post(message, copy); });
    }

    // Does what a message about presets asks of the section; false for any other message. [backend]
    template <typename Section> bool handlePreset(Section& section, const Platform::ThreadMessage& message) {
        if (message.id == storePreset_) {
            const auto preset = takeCopy<Named<Content>>(message.wParam);
            section.storePreset(preset->name, preset->content);
        } else if (message.id == storePreset_ + 1) {
            section.deletePreset(*takeCopy<std::string>(message.wParam));
        } else if (message.id == storePreset_ + 2) {
            const auto preset = takeCopy<Named<Selection>>(message.wParam);
            section.savePreset(preset->name, preset->content);
        } else {
            return false;
        }
        return true;
    }

private:
    template <typename Value> struct Named {
        std::string name;
        Value content;
    };
    template <typename Message> [[nodiscard]] static constexpr std::uint32_t idOf(Message message) noexcept {
        static_assert(std::is_enum_v<Message> || std::is_same_v<Message, std::uint32_t>);
        return static_cast<std::uint32_t>(message);
    }

    std::uint32_t first_;
    std::uint32_t last_;
    std::uint32_t storePreset_;
};

} // namespace Backend
