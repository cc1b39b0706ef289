// SPDX-License-Identifier: MIT
#include "ShelfViewFixture.h"

#include <gtest/gtest.h>

#include <QTest>

namespace stowpocket {
namespace {

class ClearConfirmationTest : public testing::Test, protected ShelfViewFixture {
protected:
    ClearConfirmationTest() {
        addFiles(20);
        viewModel->addFileURLs(makeFiles(1, 100));
        open();
        host.activateWindow();
        QTest::mouseClick(button(*view, "Clear All"), Qt::LeftButton);
    }

    /// Null when nothing is asked.
    [[nodiscard]] AlertView* alert() const {
        const auto alerts = visible<AlertView>(*view);
        return alerts.empty() ? nullptr : alerts[0];
    }
};

TEST_F(ClearConfirmationTest, cancellingChangesNothingAndItCanBeAskedAgain) {
    const std::vector<std::function<void()>> ways{
        [this] { QTest::mouseClick(button(*alert(), "Cancel"), Qt::LeftButton); },
        [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); },
        [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); },
        [this] { host.hide(), host.show(); },
    };
    for (const auto& way : ways) {
        ASSERT_NE(alert(), nullptr);
        way();
        EXPECT_EQ(alert(), nullptr);
        EXPECT_EQ(manager->items().size(), 20U);
        EXPECT_TRUE(viewModel->capacityMessage());
        QTest::mouseClick(button(*view, "Clear All"), Qt::LeftButton);
    }
}

TEST_F(ClearConfirmationTest, keepsKeyboardAndPointerToItself) {
    EXPECT_EQ(shownTexts(*alert()).first(), QLatin1String("Clear Shelf?"));
    EXPECT_LT(button(*alert(), "Clear All")->x(), button(*alert(), "Cancel")->x());
    for (const char* const name : {"Clear All", "Cancel", "Clear All"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), button(*alert(), name));
    }
    const QPoint settings = button(*view, "Settings")->mapTo(view, QPoint(5, 5));
    EXPECT_EQ(view->childAt(settings), alert());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(manager->items().empty());
    EXPECT_FALSE(viewModel->capacityMessage());
    EXPECT_EQ(alert(), nullptr);
}

}  // namespace
}  // namespace stowpocket
