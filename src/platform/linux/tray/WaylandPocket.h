// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/linux/drags/DropReading.h"
#include "platform/linux/tray/StatusItemPainter.h"
#include "platform/linux/wayland/LayerPocket.h"
#include "platform/qt/QtDrops.h"
#include "presentation/PocketList.h"

#include <QImage>
#include <QPalette>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// Draws the rows of the list, whose corner is the origin of the painter.
using PocketListPainter = std::function<void(QPainter& painter, const PocketList& list, const QPalette& palette)>;

/// The list of files that unfolds beside the pocket on a surface of its own, where one of them or all can be chosen
/// and dragged out. While it is folded it keeps nothing.
class WaylandPocketList {
public:
    /// Its surface.
    struct Surface {
        std::function<void(const LayerPlace& place)> show;
        std::function<void()> hide;
        std::function<void()> repaint;
    };

    /// All references outlive it.
    WaylandPocketList(Dispatch& dispatch, const IconDragSource& source, PocketListPainter paint, Surface surface);

    /// Whether it may unfold.
    void setAllowed(bool isAllowed);
    void pocketMoved(const LayerPlace& place);
    /// The pointer or a finger is there on that part; nothing when it has left.
    void pointAt(LayerPart part, const std::optional<QPointF>& point,
                 PocketFolding::By by = PocketFolding::By::pointer);
    void scroll(double steps, double points);
    void fold() { folding_.fold(); }
    /// Something was dropped on the pocket, over which the pointer is once more now.
    void dropped() { folding_.dismiss(); }

    [[nodiscard]] QImage picture(double scale, const QPalette& palette) const;
    [[nodiscard]] std::vector<FileURL> filesAt(const QPointF& point) const;

private:
    void becomeUnfolded(bool isUnfolded);
    void update();

    const IconDragSource& source_;
    const PocketListPainter paint_;
    const Surface surface_;
    bool isAllowed_ = true;
    LayerPlace pocket_;
    PocketFolding folding_;
    PocketList list_;
    std::vector<Subscription> changes_;
};

/// What a pocket on a Wayland surface is made with.
struct WaylandSupport {
    Dispatch& dispatch;
    /// The file of the module, which may not be there.
    std::string module;
    PocketListPainter paintList;
};

/// The pocket as a surface of the Wayland compositor, which takes the drops of Wayland programs without a detour. Not
/// every compositor can show one, and in X11 sessions there is none, nor anything of it in memory.
class WaylandPocket : private LayerPocketOwner, private IncomingDrops {
public:
    /// All references outlive it.
    WaylandPocket(const WaylandSupport& support, const StatusItemContent& content, const SymbolPainter& paintSymbol,
                  std::function<void()> onClick);
    ~WaylandPocket() override;

    /// Whether it can be shown, as far as is known now.
    [[nodiscard]] bool isReady() const { return isReady_; }
    void show(const LayerPlace& place);
    void hide();
    void showContent();
    /// As of the surface itself.
    void whenAnswered(std::function<void()> done);
    /// Whether the list of the files may unfold beside it.
    void setListAllowed(bool isAllowed) { list_.setAllowed(isAllowed); }

    Signal<> readyChanged;
    /// Emitted when a drag has entered it or left it.
    Signal<bool> hovered;
    Signal<> dropped;
    /// Emitted when files are dragged out of it, and when that is over.
    Signal<bool> dragsOut;

private:
    /// Learns of new colours.
    class PaletteWatch : public QWidget {
    public:
        explicit PaletteWatch(std::function<void()> onChange) : onChange_(std::move(onChange)) {}

    protected:
        void changeEvent(QEvent* event) override;

    private:
        const std::function<void()> onChange_;
    };

    void load();

    void layerReady() override;
    void layerLost(const std::string& why) override;
    [[nodiscard]] QImage layerPicture(LayerPart part, double scale) override;
    void layerPointedAt(LayerPart part, const std::optional<QPointF>& point) override { list_.pointAt(part, point); }
    void layerTouched(LayerPart part, const std::optional<QPointF>& point) override {
        list_.pointAt(part, point, PocketFolding::By::finger);
    }
    void layerPressed(LayerPart part) override;
    void layerClicked(LayerPart part) override;
    void layerMenuAsked() override;
    void layerScrolled(LayerPart part, double steps, double points) override;
    [[nodiscard]] bool layerEntered(const std::vector<std::string>& formats) override;
    void layerLeft() override { hovered.emit(false); }
    void layerDropped(std::shared_ptr<OfferedData> data) override;
    [[nodiscard]] LayerDrag layerDrag(LayerPart part, const QPointF& pressed, double scale) override;
    void layerDragBegan() override;
    void layerDragEnded() override { dragsOut.emit(false); }

    [[nodiscard]] const ReceivedDrop& received() const override { return received_; }
    [[nodiscard]] bool promisesFiles(const QMimeData& data) const override;
    [[nodiscard]] std::shared_ptr<FilePromiseReceiver> promiseReceiver() override { return nullptr; }
    [[nodiscard]] std::shared_ptr<ItemProvider> promiseProvider() override { return nullptr; }

    void finishDrop(OfferedData& data, const DropReading& reading);

    const WaylandSupport& support_;
    const StatusItemContent& content_;
    const SymbolPainter& paintSymbol_;
    const std::function<void()> onClick_;
    bool isReady_ = false;
    LayerPlace place_;
    /// What has been read of the drop that is being handled; nothing before.
    ReceivedDrop received_;
    bool isDropping_ = false;
    /// How many drops are being read. A source that hangs keeps a thread for a while.
    int readings_ = 0;
    std::unique_ptr<PaletteWatch> palette_;
    std::unique_ptr<LayerPocket> layer_;
    WaylandPocketList list_;
    /// Ends what is still to be done on its behalf.
    QObject context_;
    const std::shared_ptr<WaylandPocket*> self_ = std::make_shared<WaylandPocket*>(this);
};

}  // namespace stowpocket
