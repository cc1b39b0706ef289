// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeDesktop.h"
#include "fakes/ShelfFixture.h"
#include "platform/qt/QtImages.h"
#include "presentation/Texts.h"
#include "views/shelf/ShelfView.h"

#include <QMimeData>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

namespace stowpocket {

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
template <class Widget = Button>
Widget* named(QWidget& root, const char* name) {
    for (Widget* const widget : visible<Widget>(root)) {
        const auto* const button = qobject_cast<const QAbstractButton*>(widget);
        const QString wanted = QString::fromUtf8(name);
        if (widget->accessibleName() == wanted || (button != nullptr && button->text() == wanted))
            return widget;
    }
    return nullptr;
}

inline void click(QWidget* widget) {
    ASSERT_NE(widget, nullptr);
    QTest::mouseClick(widget, Qt::LeftButton);
    QApplication::processEvents();
}

/// Presses a key where the keyboard is.
inline void press(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
}

/// The popover's view over a real shelf on fakes, in a window as its host would place it.
struct ShelfViewFixture : ShelfFixture {
    ShelfViewFixture() { icons.paint = paintedIcon; }

    /// A square in a colour of its own for each length of extension.
    static Image paintedIcon(const FileURL& url) {
        QImage image(96, 96, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromHsv(static_cast<int>(qHash(url.pathExtension().size()) % 360), 140, 210));
        painter.drawRoundedRect(QRectF(14, 4, 68, 88), 8, 8);
        return {std::make_shared<QtImageContent>(image), Size{48, 48}};
    }

    void addFile(const std::string& name, std::size_t size = 1200) {
        const std::string path = "/files/" + name;
        files.add(path, std::string(size, 'x'));
        manager->addFiles(std::vector{fileAt(path)});
    }

    /// With a short name, one of words and one that can only be broken anywhere.
    void addThreeFiles() {
        addFile("report.pdf", 48'300);
        addFile("Quarterly figures of the northern branch, final version 3.xlsx", 1'260'000);
        addFile("holiday_2024_by_the_sea_panorama_edited.jpeg", 3'400'000);
    }

    /// Makes the view over so many files and shows it, with the keyboard, at the height that it wishes for.
    ShelfView& open(int fileCount = 0) {
        if (fileCount > 0)
            addFiles(fileCount);
        view = new ShelfView(ShelfView::Dependencies{
            viewModel,
            [this] { ++settingsOpened; },
            [this] { ++quits; },
            {[](const QMimeData& data) { return data.hasUrls() || data.hasFormat(promiseFormat); },
             [this](const QMimeData& data) { return providersOf(data); }},
            {[this](QWidget&, const std::vector<FileURL>& dragFiles, const QPixmap& picture, QPoint hotSpot) {
                 dragged = {namesOf(dragFiles, &FileURL::lastPathComponent), picture, hotSpot};
             },
             byteCountText, opener}});
        view->setParent(&host);
        host.show();
        view->show();
        fit();
        host.activateWindow();
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
        for (const QUrl& url : data.urls()) {
            if (url.isLocalFile())
                dropped.push_back(FakeItemProvider::withURL(url.toString().toStdString()));
        }
        return {dropped.begin(), dropped.end()};
    }

    [[nodiscard]] std::vector<ShelfItemView*> tiles() const { return visible<ShelfItemView>(*view); }
    [[nodiscard]] bool shows(const char* text) { return shownTexts(host).contains(QString::fromUtf8(text)); }

    struct Drag {
        Names names;
        QPixmap picture;
        QPoint hotSpot;
    };

    static inline const QString promiseFormat = QStringLiteral("application/x-promise");
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

}  // namespace stowpocket
