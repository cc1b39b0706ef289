// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/LayerSurface.h"
#include "platform/linux/wayland/PocketPointer.h"
#include "platform/linux/wayland/WaylandDrags.h"

#include <QTimer>

#include <chrono>
#include <cmath>
#include <optional>
#include <utility>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// For the compositor to give a surface its place.
constexpr auto placingTime = 2s;
/// How often in a row a surface that the compositor takes away is made again.
constexpr int mostClosings = 3;

/// The connection, and what the pocket has of it at the moment.
class CompositorPocket : public LayerPocket {
public:
    explicit CompositorPocket(LayerPocketOwner& owner) : owner_(owner) {
        placing_.setSingleShot(true);
        QObject::connect(&placing_, &QTimer::timeout, [this] { checkPlace(); });
        remaking_.setSingleShot(true);
        QObject::connect(&remaking_, &QTimer::timeout, [this] { remake(); });
    }

    [[nodiscard]] bool connect() {
        display_ = WaylandDisplay::connect({.ready = [this] { ready(); },
                                            .lost = [this](const std::string& why) { lose(why); },
                                            .outputsChanged = [this] { outputsChanged(); },
                                            .seatChanged = [this] { seatChanged(); }});
        return display_ != nullptr;
    }

    void show(const LayerPlace& place) override {
        const bool isElsewhere = surface_ && surface_->place().output != place.output;
        place_ = place;
        if (!isReady_ || isLost_)
            return;
        if (isElsewhere)
            closeSurface();
        if (surface_)
            surface_->move(place);
        else
            makeSurface();
        display_->flush();
    }
    void hide() override {
        place_.reset();
        closings_ = 0;
        closeSurface();
        display_->flush();
    }
    void repaint() override {
        if (surface_)
            surface_->repaint();
        display_->flush();
    }

private:
    void ready() {
        if (!display_->layerShell)
            return lose("it has no layers for surfaces");
        if (!display_->compositor || !display_->memory || !display_->dataDevices)
            return lose("it lacks what every compositor has");
        isReady_ = true;
        seatChanged();
        owner_.layerReady();
    }
    void lose(const std::string& why) {
        if (std::exchange(isLost_, true))
            return;
        placing_.stop();
        owner_.layerLost(why);
    }

    void makeSurface() {
        // Compositors without a screen take every surface away at once.
        if (!display_->hasOutputs())
            return;
        surface_.emplace(
            *display_, *place_, [this](double scale) { return owner_.layerPicture(scale); },
            [this] { remaking_.start(0); });
        placing_.start(placingTime);
    }
    void closeSurface() {
        placing_.stop();
        remaking_.stop();
        if (drops_)
            drops_->left();
        if (pointer_)
            pointer_->left();
        surface_.reset();
    }
    void checkPlace() {
        if (surface_ && !surface_->isPlaced())
            lose("it gives the pocket no place");
    }
    /// The compositor has taken the surface away, as it does when a screen goes.
    void remake() {
        closeSurface();
        if (++closings_ > mostClosings)
            return lose("it takes the pocket away");
        if (place_)
            makeSurface();
        display_->flush();
    }
    void outputsChanged() {
        closings_ = 0;
        if (surface_)
            surface_->outputsChanged();
        else if (isReady_ && place_)
            makeSurface();
    }

    void seatChanged() {
        if (!display_->dataDevices || !display_->seat) {
            source_.reset();
            drops_.reset();
            pointer_.reset();
            return;
        }
        if (!isReady_)
            return;
        if (!drops_)
            drops_.emplace(
                *display_,
                DropTarget::Events{
                    .entered = [this](const auto& formats) { return entered(formats); },
                    .left = [this] { owner_.layerLeft(); },
                    .dropped = [this](std::shared_ptr<OfferedData> data) { owner_.layerDropped(std::move(data)); }});
        if (!display_->hasPointer())
            pointer_.reset();
        else if (!pointer_)
            pointer_.emplace(
                *display_,
                PocketPointer::Events{
                    .clicked = [this] { owner_.layerClicked(); },
                    .menuAsked = [this] { owner_.layerMenuAsked(); },
                    .dragBegan = [this](const QPointF& pressed, std::uint32_t serial) { drag(pressed, serial); },
                    .size = [this] { return surface_ ? QSizeF(surface_->place().size) : QSizeF(); },
                    .scale = [this] { return surface_ ? surface_->scale() : 1; }});
    }

    /// Its own files would only come back.
    [[nodiscard]] bool entered(const std::vector<std::string>& formats) {
        return !(source_ && source_->isOn()) && owner_.layerEntered(formats);
    }
    void drag(const QPointF& pressed, std::uint32_t serial) {
        if (!surface_ || !drops_)
            return;
        LayerDrag files = owner_.layerDrag(pressed, std::ceil(surface_->scale()));
        if (files.uriList.empty())
            return;
        source_.reset();
        source_ = std::make_unique<FileSource>(*display_, std::move(files),
                                               FileSource::Press{drops_->device(), surface_->handle(), serial},
                                               [this] { owner_.layerDragEnded(); });
    }

    LayerPocketOwner& owner_;
    std::unique_ptr<WaylandDisplay> display_;
    bool isReady_ = false;
    bool isLost_ = false;
    int closings_ = 0;
    /// Where it is to be shown, if it is to be.
    std::optional<LayerPlace> place_;
    std::optional<LayerSurface> surface_;
    std::optional<DropTarget> drops_;
    std::optional<PocketPointer> pointer_;
    std::unique_ptr<FileSource> source_;
    QTimer placing_;
    QTimer remaking_;
};

}  // namespace
}  // namespace stowpocket

extern "C" Q_DECL_EXPORT stowpocket::LayerPocket* stowpocketMakeLayerPocket(stowpocket::LayerPocketOwner& owner) {
    auto pocket = std::make_unique<stowpocket::CompositorPocket>(owner);
    return pocket->connect() ? pocket.release() : nullptr;
}
