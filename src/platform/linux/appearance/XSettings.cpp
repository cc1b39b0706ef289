// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/XSettings.h"

#include "platform/linux/x11/X11Connection.h"

#include <algorithm>
#include <variant>

namespace stowpocket {
namespace {

enum class SettingType : std::uint32_t { integer = 0, string = 1, color = 2 };

/// Reads the bytes in the byte order of the writer. After the end every value is zero, and the reading has failed.
class Reader {
public:
    /// The first byte is the byte order, padded to four bytes.
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
    /// A text is padded to a multiple of four bytes.
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

using Value = std::variant<std::int32_t, std::string>;

/// Nothing for a colour.
std::optional<Value> valueOf(std::string_view property, std::string_view name) {
    Reader reader(property);
    reader.skip(4);  // the serial number
    for (std::uint32_t left = reader.number(4); left > 0 && !reader.hasFailed(); --left) {
        const auto type = SettingType{reader.number(1)};
        reader.skip(1);
        const bool isWanted = reader.text(reader.number(2)) == name;
        reader.skip(4);  // when it was changed last
        std::optional<Value> value;
        if (type == SettingType::integer)
            value = static_cast<std::int32_t>(reader.number(4));
        else if (type == SettingType::string)
            value = std::string(reader.text(reader.number(4)));
        else if (type == SettingType::color)
            reader.skip(8);
        else
            return std::nullopt;
        if (isWanted && value && !reader.hasFailed())
            return value;
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::int32_t> integerXSetting(std::string_view property, std::string_view name) {
    const std::optional<Value> value = valueOf(property, name);
    const auto* const number = value ? std::get_if<std::int32_t>(&*value) : nullptr;
    return number == nullptr ? std::nullopt : std::optional(*number);
}

std::optional<std::string> textXSetting(std::string_view property, std::string_view name) {
    const std::optional<Value> value = valueOf(property, name);
    const auto* const text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text == nullptr ? std::nullopt : std::optional(*text);
}

bool isDarkThemeName(std::string_view name) {
    constexpr std::string_view mark = "-dark";
    const auto isSame = [](char one, char other) {
        return one == other || (one >= 'A' && one <= 'Z' && one + 32 == other);
    };
    const auto found = std::search(name.begin(), name.end(), mark.begin(), mark.end(), isSame);
    return found != name.end() && (found + mark.size() == name.end() || found[mark.size()] == '-');
}

bool isMotionReduced(const X11Connection& connection) {
    const xcb_window_t owner = connection.selectionOwner(X11Atom::settingsOwner);
    if (owner == x11None)
        return false;
    return integerXSetting(connection.text(owner, X11Atom::settings).value_or(""), "Gtk/EnableAnimations") == 0;
}

}  // namespace stowpocket
