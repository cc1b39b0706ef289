// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeDesktop.h"
#include "fakes/FakeItemProvider.h"
#include "fakes/ShelfFixture.h"
#include "foundation/Text.h"
#include "platform/qt/QtImages.h"
#include "presentation/Texts.h"
#include "views/shelf/ShelfView.h"

#include <QApplication>
#include <QMimeData>
#include <QPainter>

#include <algorithm>

namespace stowpocket {

/// A square in a colour of its own for each file type.
class PaintedIcons : public WorkspaceIcons {
public:
    [[nodiscard]] Image icon(const FileURL& url) override {
        QImage image(96, 96, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromHsv(static_cast<int>(qHash(url.pathExtension().size()) % 360), 140, 210));
        painter.drawRoundedRect(QRectF(14, 4, 68, 88), 8, 8);
        ++asked;
        return {std::make_shared<QtImageContent>(image), Size{48, 48}};
    }
    [[nodiscard]] std::string lowercased(const std::string& extension) const override {
        return asciiLowercased(extension);
    }
    int asked = 0;
};

/// The popover's view over a real shelf on fakes, in a window as its host would place it.
struct ShelfViewFixture : ShelfFixture {
    ShelfViewFixture() {
        manager = ShelfManager::make({core, files, thumbnails, painted, screen});
        viewModel = ShelfViewModel::make(manager, files, dispatch, clipboard);
    }

    /// Adds a file of that name and size, and answers its path.
    std::string addFile(const std::string& name, std::size_t size = 1200) {
        const std::string path = "/files/" + name;
        files.add(path, std::string(size, 'x'));
        manager->addFiles(std::vector{*FileURL::fromPath(path)});
        return path;
    }

    /// With a short name, one of words and one that can only be broken anywhere.
    void addThreeFiles() {
        addFile("report.pdf", 48'300);
        addFile("Quarterly figures of the northern branch, final version 3.xlsx", 1'260'000);
        addFile("holiday_2024_by_the_sea_panorama_edited.jpeg", 3'400'000);
    }

    /// Makes the view and shows it at the height that it wishes for.
    ShelfView& open() {
        view = new ShelfView(ShelfView::Dependencies{
            viewModel,
            [this] { ++settingsOpened; },
            [this] { ++quits; },
            {[](const QMimeData& data) { return data.hasUrls() || data.hasFormat(promiseFormat); },
             [this](const QMimeData& data) { return providersOf(data); }},
            {[this](QWidget&, const std::vector<FileURL>& dragFiles, const QPixmap& picture, QPoint hotSpot) {
                 dragged = {{}, picture, hotSpot};
                 for (const FileURL& file : dragFiles)
                     dragged.paths.push_back(file.path());
             },
             byteCountText, opener}});
        view->setParent(&host);
        host.show();
        view->show();
        fit();
        return *view;
    }

    /// What a host does when the view's wish has changed.
    void fit() {
        view->resize(view->sizeHint().boundedTo(QSize(QWIDGETSIZE_MAX, room)));
        host.resize(view->size());
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }

    std::vector<std::shared_ptr<ItemProvider>> providersOf(const QMimeData& data) {
        std::vector<std::shared_ptr<ItemProvider>> made;
        for (const QUrl& url : data.urls()) {
            if (url.isLocalFile())
                dropped.push_back(FakeItemProvider::withURL(url.toString().toStdString()));
        }
        if (data.hasFormat(promiseFormat))
            dropped.push_back(FakeItemProvider::withContents("public.data", "/temporary/promised"));
        std::ranges::copy(dropped, std::back_inserter(made));
        return made;
    }

    struct Drag {
        std::vector<std::string> paths;
        QPixmap picture;
        QPoint hotSpot;
    };

    static inline const QString promiseFormat = QStringLiteral("application/x-promise");
    PaintedIcons painted;
    std::vector<std::shared_ptr<FakeItemProvider>> dropped;
    int settingsOpened = 0;
    int quits = 0;
    Drag dragged;
    FakeFileOpener opener;
    /// How high the host lets the view be.
    int room = QWIDGETSIZE_MAX;
    QWidget host;
    ShelfView* view = nullptr;
};

/// All widgets of that class below `root` that can be seen, in the order of their making.
template <class Widget>
std::vector<Widget*> visible(QWidget& root) {
    std::vector<Widget*> found;
    for (QWidget* const widget : root.findChildren<QWidget*>()) {
        if (auto* const wanted = dynamic_cast<Widget*>(widget); wanted != nullptr && widget->isVisible())
            found.push_back(wanted);
    }
    return found;
}

/// What the labels and the buttons with text that can be seen say.
inline QStringList shownTexts(QWidget& root) {
    QStringList texts;
    for (const Text* const text : visible<Text>(root))
        texts.append(text->text());
    for (const Button* const button : visible<Button>(root)) {
        if (!button->text().isEmpty())
            texts.append(button->text());
    }
    return texts;
}

/// The view of that class and accessible name or text that can be seen; null when there is none.
template <class Widget>
Widget* named(QWidget& root, const QString& name) {
    for (Widget* const widget : visible<Widget>(root)) {
        const auto* const button = qobject_cast<const QAbstractButton*>(widget);
        if (widget->accessibleName() == name || (button != nullptr && button->text() == name))
            return widget;
    }
    return nullptr;
}

inline Button* button(QWidget& root, const char* name) {
    return named<Button>(root, QLatin1String(name));
}

}  // namespace stowpocket
