// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11Pocket.h"

#include "linux/drags/FakeDrops.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

TEST(PocketTest, standsInTheCornerOnceTheIconIsNowhereElse) {
    const auto connection = X11Connection::ofApplication();
    const StatusItemFace face;
    FakeDrops drops;
    const SymbolPainter paintSymbol = [](const StatusItemImage&, const QColor&, int) { return QImage(); };
    X11Pocket pocket(*connection, face, paintSymbol, drops, [] {});
    pocket.setResident(true);
    const std::optional<QRect> corner = pocket.rectOnScreen();
    const QRect icon(400, 300, 31, 22);
    for (const bool hasDragEnded : {true, false}) {
        pocket.setResident(false);
        pocket.dragBegan(icon);
        ASSERT_EQ(pocket.rectOnScreen(), icon);
        if (hasDragEnded)
            pocket.dragEnded(DragEnd::sourceGone);
        pocket.setResident(true);
        EXPECT_EQ(pocket.rectOnScreen(), corner) << hasDragEnded;
    }
}

}  // namespace
}  // namespace stowpocket
