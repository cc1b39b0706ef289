// SPDX-License-Identifier: MIT
#include "platform/linux/session/StartupId.h"

#include <charconv>

namespace stowpocket {

std::optional<std::uint32_t> startupTime(std::string_view id) {
    constexpr std::string_view mark = "_TIME";
    const std::size_t at = id.rfind(mark);
    if (at == std::string_view::npos)
        return std::nullopt;
    const std::string_view digits = id.substr(at + mark.size());
    std::uint32_t time = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), time);
    const bool isTime = error == std::errc() && end == digits.data() + digits.size() && time != 0;
    return isTime ? std::optional(time) : std::nullopt;
}

std::string startupCompleteMessage(std::string_view id) {
    std::string message = "remove: ID=";
    for (const char letter : id) {
        if (letter == ' ' || letter == '"' || letter == '\\')
            message += '\\';
        message += letter;
    }
    return message;
}

}  // namespace stowpocket
