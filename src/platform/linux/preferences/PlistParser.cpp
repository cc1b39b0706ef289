// SPDX-License-Identifier: MIT
#include "platform/linux/preferences/PlistParser.h"

#include "platform/linux/preferences/PropertyList.h"

namespace stowpocket {

std::optional<PropertyValue> PlistParser::parse(const Bytes& bytes) {
    return parsePropertyList(std::string(bytes.begin(), bytes.end()));
}

}  // namespace stowpocket
