// SPDX-License-Identifier: MIT
#include "platform/linux/storage/PlistParser.h"

#include "platform/linux/storage/PropertyList.h"

namespace stowpocket {

std::optional<PropertyValue> PlistParser::parse(const Bytes& bytes) {
    return parsePropertyList(std::string(bytes.begin(), bytes.end()));
}

}  // namespace stowpocket
