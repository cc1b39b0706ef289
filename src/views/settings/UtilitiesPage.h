// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

class QWidget;

namespace stowpocket {

/// The page about the maker's other programs.
[[nodiscard]] QWidget* utilitiesPage(const std::function<void(const std::string& url)>& openURL);

}  // namespace stowpocket
