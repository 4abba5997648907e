// The channel on which a translation sends.
#pragma once

#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Backend::MidiInput {

class ChannelTranslation final : public XmlItem {
public:
    static constexpr std::int32_t UNCHANGED = -2;       // that of the incoming message
    static constexpr std::int32_t DEFAULT_CHANNEL = -1; // that of zone or layer

    // The default channel.
    ChannelTranslation() = default;
    explicit ChannelTranslation(std::int32_t channel) noexcept : channel_(channel) {}
    // Text, trimmed: "unchanged", "default" or nothing, else a number. No number reads as 0.
    explicit ChannelTranslation(std::string_view text) noexcept;

    // What is not 0..15 and not unchanged is sent on the default channel.
    [[nodiscard]] std::int32_t getChannel() const noexcept { return channel_; }
    [[nodiscard]] bool isUnchanged() const noexcept { return channel_ == UNCHANGED; }
    [[nodiscard]] bool isDefault() const noexcept { return channel_ == DEFAULT_CHANNEL; }
    [[nodiscard]] bool isFixed() const noexcept { return channel_ >= 0 && channel_ <= 15; }

    // The number: "-2" for unchanged.
    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const ChannelTranslation& a, const ChannelTranslation& b) noexcept {
        return a.channel_ == b.channel_;
    }

private:
    std::int32_t channel_ = DEFAULT_CHANNEL;
};

} // namespace Backend::MidiInput
