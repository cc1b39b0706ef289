// SPDX-License-Identifier: MIT
#include "presentation/ByteCount.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace stowpocket {
namespace {

TEST(ByteCountTest, readsAsThePlatformWritesFileSizes) {
    const std::pair<std::int64_t, const char*> table[] = {
        {0, "Zero KB"},
        {1, "1 byte"},
        {999, "999 bytes"},
        {1'000, "1 KB"},
        {12'499, "12 KB"},
        {12'500, "13 KB"},
        {999'499, "999 KB"},
        {999'500, "1 MB"},
        {1'049'999, "1 MB"},
        {3'400'000, "3.4 MB"},
        {3'449'999, "3.4 MB"},
        {999'949'999, "999.9 MB"},
        {999'950'000, "1 GB"},
        {1'250'000'000, "1.25 GB"},
        {1'050'000'000, "1.05 GB"},
        {1'200'000'000, "1.2 GB"},
        {5'000'000'000'000, "5 TB"},
        {std::numeric_limits<std::int64_t>::max(), "9.22 EB"},
        {std::numeric_limits<std::int64_t>::min(), "-9.22 EB"},
        {-1, "-1 byte"},
    };
    for (const auto& [bytes, text] : table)
        EXPECT_EQ(byteCountText(bytes), text) << bytes;
}

}  // namespace
}  // namespace stowpocket
