// SPDX-License-Identifier: MIT
#include "platform/linux/x11/XSettings.h"

#include "platform/linux/x11/X11Connection.h"

namespace stowpocket {
namespace {

enum class SettingType : std::uint32_t { integer = 0, string = 1, color = 2 };

/// Walks over the bytes in the writer's byte order. Beyond the end everything is zero, and the walk has failed.
class Reader {
public:
    /// The first byte tells the byte order and stands in a word of its own.
    explicit Reader(std::string_view bytes) : left_(bytes), isBigEndian_(!bytes.empty() && bytes.front() != 0) {
        skip(4);
    }

    [[nodiscard]] bool hasFailed() const { return hasFailed_; }

    std::uint32_t number(std::size_t size) {
        std::uint32_t value = 0;
        const std::string_view taken = bytes(size);
        for (std::size_t at = 0; at < taken.size(); ++at)
            value = value << 8u | static_cast<std::uint8_t>(taken[isBigEndian_ ? at : taken.size() - 1 - at]);
        return value;
    }
    std::string_view bytes(std::size_t size) {
        hasFailed_ = hasFailed_ || size > left_.size();
        if (hasFailed_)
            return {};
        const std::string_view taken = left_.substr(0, size);
        left_.remove_prefix(size);
        return taken;
    }
    /// A text is filled up to whole words of four bytes.
    std::string_view text(std::size_t size) {
        const std::string_view taken = bytes(size);
        skip((4 - size % 4) % 4);
        return taken;
    }
    void skip(std::size_t size) { static_cast<void>(bytes(size)); }

private:
    std::string_view left_;
    const bool isBigEndian_;
    bool hasFailed_ = false;
};

}  // namespace

std::optional<std::int32_t> integerXSetting(std::string_view property, std::string_view name) {
    Reader reader(property);
    reader.skip(4);  // the serial number
    for (std::uint32_t left = reader.number(4); left > 0 && !reader.hasFailed(); --left) {
        const auto type = SettingType{reader.number(1)};
        reader.skip(1);
        const std::string_view found = reader.text(reader.number(2));
        reader.skip(4);  // when it was changed last
        const std::uint32_t value = type == SettingType::color ? 0 : reader.number(4);
        if (type == SettingType::integer && found == name && !reader.hasFailed())
            return static_cast<std::int32_t>(value);
        if (type == SettingType::string)
            reader.text(value);
        else if (type == SettingType::color)
            reader.skip(8);
        else if (type != SettingType::integer)
            return std::nullopt;
    }
    return std::nullopt;
}

bool isMotionReduced(const X11Connection& connection) {
    const xcb_window_t owner = connection.selectionOwner(X11Atom::settingsOwner);
    if (owner == x11None)
        return false;
    return integerXSetting(connection.text(owner, X11Atom::settings).value_or(""), "Gtk/EnableAnimations") == 0;
}

}  // namespace stowpocket
