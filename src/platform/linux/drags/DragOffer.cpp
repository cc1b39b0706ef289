// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DragOffer.h"

#include <algorithm>

namespace stowpocket {

DragOffer judgeDrag(std::optional<std::span<const std::uint32_t>> targets, std::span<const std::uint32_t> typeList,
                    std::uint32_t uriList, std::uint32_t directSave) {
    if (!targets && typeList.empty())
        return DragOffer::unknown;
    const std::span<const std::uint32_t> types = targets.value_or(typeList);
    const auto has = [&](std::uint32_t type) { return std::ranges::find(types, type) != types.end(); };
    if (has(uriList))
        return DragOffer::files;
    return has(directSave) ? DragOffer::promise : DragOffer::nothing;
}

}  // namespace stowpocket
