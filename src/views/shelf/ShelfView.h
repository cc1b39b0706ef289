// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Button.h"
#include "views/controls/Popups.h"
#include "views/shelf/ShelfContentView.h"

#include <QLayout>
#include <QWidget>

#include <functional>
#include <optional>

namespace stowpocket {

/// A stack of views by which something can be dragged.
class DragHandle : public QWidget {
public:
    /// `startDrag` runs while the main button is held and the pointer has moved far enough.
    DragHandle(QLayout* stack, std::function<void(QWidget& handle)> startDrag);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    const std::function<void(QWidget& handle)> startDrag_;
    std::optional<QPoint> pressedAt_;
};

/// The content of the shelf popover: the staged files between a header with their count and a footer with buttons. It
/// keeps no state of the shelf and reads it again after each change. Its preferred height is that of its content;
/// with less, the tiles scroll. The window behind it paints the background.
class ShelfView : public QWidget {
public:
    struct Dependencies {
        std::shared_ptr<ShelfViewModel> viewModel;
        std::function<void()> onOpenSettings;
        std::function<void()> onQuit;
        DropReader drops;
        TileServices tiles;
    };

    explicit ShelfView(Dependencies dependencies);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QLayout* header();
    [[nodiscard]] QWidget* banner();
    [[nodiscard]] QWidget* saveBanner();
    [[nodiscard]] QWidget* progressRow();
    [[nodiscard]] QLayout* footer();

    void observe();
    void refresh();
    void setPresentation(const ShelfPresentation& shown);
    void confirmClear();
    void clear();

    const Dependencies dependencies_;
    ShelfViewModel& viewModel_;
    Text* badge_ = nullptr;
    Text* bannerText_ = nullptr;
    QWidget* banner_ = nullptr;
    Text* saveBannerText_ = nullptr;
    QWidget* saveBanner_ = nullptr;
    ShelfContentView* content_ = nullptr;
    QWidget* progress_ = nullptr;
    Button* clearButton_ = nullptr;
    ShelfPresentation shown_;
    QPointer<AlertView> clearConfirmation_;
    QPointer<AlertView> openConfirmation_;
    std::vector<Subscription> observations_;
};

}  // namespace stowpocket
