// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/LayerSurface.h"
#include "platform/linux/wayland/PocketInput.h"
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
        foldingList_.setSingleShot(true);
        QObject::connect(&foldingList_, &QTimer::timeout, [this] { hide(LayerPart::list); });
    }

    [[nodiscard]] bool connect() {
        display_ = WaylandDisplay::connect({.ready = [this] { ready(); },
                                            .lost = [this](const std::string& why) { lose(why); },
                                            .outputsChanged = [this] { outputsChanged(); },
                                            .seatChanged = [this] { seatChanged(); }});
        return display_ != nullptr;
    }

    void show(LayerPart part, const LayerPlace& place) override {
        Shown& shown = of(part);
        const bool isElsewhere = shown.surface && shown.surface->place().output != place.output;
        shown.place = place;
        if (!isReady_ || isLost_)
            return;
        if (isElsewhere)
            closeSurface(part);
        if (shown.surface)
            shown.surface->move(place);
        else
            makeSurface(part);
        display_->flush();
    }
    void hide(LayerPart part) override {
        of(part).place.reset();
        closings_ = 0;
        closeSurface(part);
        display_->flush();
    }
    void repaint(LayerPart part) override {
        if (of(part).surface)
            of(part).surface->repaint();
        display_->flush();
    }
    void whenAnswered(std::function<void()> done) override { display_->whenAnswered(std::move(done)); }

private:
    /// What there is of one part.
    struct Shown {
        /// Where it is to be shown, if it is to be.
        std::optional<LayerPlace> place;
        std::optional<LayerSurface> surface;
    };

    [[nodiscard]] Shown& of(LayerPart part) { return part == LayerPart::pocket ? pocket_ : list_; }
    /// The part with that surface; none if it is gone.
    [[nodiscard]] std::optional<LayerPart> partOf(const wl_surface* handle) {
        for (const LayerPart part : {LayerPart::pocket, LayerPart::list})
            if (of(part).surface && of(part).surface->handle() == handle)
                return part;
        return std::nullopt;
    }

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

    void makeSurface(LayerPart part) {
        // Compositors without a screen take every surface away at once.
        if (!display_->hasOutputs())
            return;
        of(part).surface.emplace(
            *display_, *of(part).place, [this, part](double scale) { return owner_.layerPicture(part, scale); },
            [this, part] { closed(part); });
        if (part == LayerPart::pocket)
            placing_.start(placingTime);
    }
    void closeSurface(LayerPart part) {
        if (part == LayerPart::pocket) {
            placing_.stop();
            remaking_.stop();
        }
        std::optional<LayerSurface>& surface = of(part).surface;
        if (!surface)
            return;
        if (drops_)
            drops_->left(surface->handle());
        if (touch_)
            touch_->left(part);
        const bool wasPointedAt = pointer_ && pointer_->left(part);
        surface.reset();
        if (wasPointedAt)
            owner_.layerPointedAt(part, std::nullopt);
    }
    /// The compositor has taken the surface away, as it does when a screen goes. Only the pocket is made again.
    void closed(LayerPart part) {
        if (part == LayerPart::pocket)
            return remaking_.start(0);
        foldingList_.start(0);
    }
    void checkPlace() {
        if (pocket_.surface && !pocket_.surface->isPlaced())
            lose("it gives the pocket no place");
    }
    void remake() {
        closeSurface(LayerPart::pocket);
        if (++closings_ > mostClosings)
            return lose("it takes the pocket away");
        if (pocket_.place)
            makeSurface(LayerPart::pocket);
        display_->flush();
    }
    void outputsChanged() {
        closings_ = 0;
        if (list_.surface)
            list_.surface->outputsChanged();
        if (pocket_.surface)
            pocket_.surface->outputsChanged();
        else if (isReady_ && pocket_.place)
            makeSurface(LayerPart::pocket);
    }

    void seatChanged() {
        if (!display_->dataDevices || !display_->seat) {
            source_.reset();
            drops_.reset();
            pointer_.reset();
            touch_.reset();
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
        pointerChanged();
        touchChanged();
    }
    void touchChanged() {
        if (!display_->hasTouch())
            touch_.reset();
        else if (!touch_)
            touch_.emplace(*display_, PocketTouch::Events{
                                          .part = [this](const wl_surface* surface) { return partOf(surface); },
                                          .touched = [this](LayerPart part,
                                                            const auto& point) { owner_.layerTouched(part, point); },
                                          .tapped = [this](LayerPart part) { owner_.layerClicked(part); },
                                          .dragBegan = [this](LayerPart part, const QPointF& pressed,
                                                              std::uint32_t serial) { drag(part, pressed, serial); },
                                          .size = [this](LayerPart part) { return sizeOf(part); }});
    }
    void pointerChanged() {
        if (!display_->hasPointer()) {
            pointer_.reset();
            owner_.layerPointedAt(LayerPart::pocket, std::nullopt);
        } else if (!pointer_) {
            pointer_.emplace(
                *display_,
                PocketPointer::Events{
                    .part = [this](const wl_surface* surface) { return partOf(surface); },
                    .pointedAt = [this](LayerPart part, const auto& point) { owner_.layerPointedAt(part, point); },
                    .pressed = [this](LayerPart part) { owner_.layerPressed(part); },
                    .clicked = [this](LayerPart part) { owner_.layerClicked(part); },
                    .menuAsked = [this] { owner_.layerMenuAsked(); },
                    .scrolled = [this](LayerPart part, double steps,
                                       double points) { owner_.layerScrolled(part, steps, points); },
                    .dragBegan = [this](LayerPart part, const QPointF& pressed,
                                        std::uint32_t serial) { drag(part, pressed, serial); },
                    .size = [this](LayerPart part) { return sizeOf(part); },
                    .scale = [this](LayerPart part) { return of(part).surface ? of(part).surface->scale() : 1; }});
        }
    }

    [[nodiscard]] QSizeF sizeOf(LayerPart part) {
        return of(part).surface ? QSizeF(of(part).surface->place().size) : QSizeF();
    }

    /// Its own files would only come back.
    [[nodiscard]] bool entered(const std::vector<std::string>& formats) {
        return !(source_ && source_->isOn()) && owner_.layerEntered(formats);
    }
    void drag(LayerPart part, const QPointF& pressed, std::uint32_t serial) {
        const std::optional<LayerSurface>& surface = of(part).surface;
        if (!surface || !drops_)
            return;
        LayerDrag files = owner_.layerDrag(part, pressed, std::ceil(surface->scale()));
        if (files.uriList.empty())
            return;
        source_.reset();
        source_ = std::make_unique<FileSource>(*display_, std::move(files),
                                               FileSource::Press{drops_->device(), surface->handle(), serial},
                                               [this] { owner_.layerDragEnded(); });
        owner_.layerDragBegan();
    }

    LayerPocketOwner& owner_;
    std::unique_ptr<WaylandDisplay> display_;
    bool isReady_ = false;
    bool isLost_ = false;
    int closings_ = 0;
    Shown pocket_;
    Shown list_;
    std::optional<DropTarget> drops_;
    std::optional<PocketPointer> pointer_;
    std::optional<PocketTouch> touch_;
    std::unique_ptr<FileSource> source_;
    QTimer placing_;
    QTimer remaking_;
    QTimer foldingList_;
};

}  // namespace
}  // namespace stowpocket

extern "C" Q_DECL_EXPORT stowpocket::LayerPocket* stowpocketMakeLayerPocket(stowpocket::LayerPocketOwner& owner) {
    auto pocket = std::make_unique<stowpocket::CompositorPocket>(owner);
    return pocket->connect() ? pocket.release() : nullptr;
}
