// SPDX-License-Identifier: MIT
#include "updates/FeedText.h"

#include "foundation/Text.h"

#include <string>

namespace stowpocket {

bool hasFeedItem(const Bytes& body) {
    const std::string text(body.begin(), body.end());
    return validUtf8(text) == text &&
           (text.find("<item>") != std::string::npos || text.find("<item ") != std::string::npos);
}

}  // namespace stowpocket
