// SPDX-License-Identifier: MIT
// Paints the shelf popover and the window of updates in their states into PNG files, for people to look at.
//   shelf_pictures FOLDER [SUFFIX]
#include "ShelfViewFixture.h"
#include "views/UpdateView.h"

#include <QDir>
#include <QEnterEvent>
#include <QTextStream>

using namespace stowpocket;

namespace {

class Pictures {
public:
    Pictures(QString folder, QString suffix) : folder_(std::move(folder)), suffix_(std::move(suffix)) {}

    void save(const char* name, ShelfViewFixture& shelf) {
        shelf.fit();
        save(name, shelf.host);
    }
    void save(const char* name, QWidget& window) {
        const QString path = QStringLiteral("%1/%2-%3.png").arg(folder_, QLatin1String(name), suffix_);
        if (!window.grab().save(path))
            QTextStream(stderr) << "cannot write " << path << '\n';
    }

private:
    const QString folder_;
    const QString suffix_;
};

void paintAll(Pictures& pictures) {
    {
        ShelfViewFixture shelf;
        shelf.open();
        pictures.save("empty", shelf);
        for (DropZoneView* const zone : visible<DropZoneView>(*shelf.view)) {
            zone->hide();
            zone->setTargeted(true);
            zone->show();
        }
        pictures.save("empty-targeted", shelf);
    }
    {
        ShelfViewFixture shelf;
        shelf.addThreeFiles();
        shelf.open();
        pictures.save("three", shelf);
        auto tiles = visible<ShelfItemView>(*shelf.view);
        QEnterEvent enter(QPointF(40, 40), QPointF(40, 40), QPointF(40, 40));
        QApplication::sendEvent(tiles[0], &enter);
        tiles[1]->setFocus();
        pictures.save("three-hovered", shelf);
        for (DropZoneView* const zone : visible<DropZoneView>(*shelf.view)) {
            zone->hide();
            zone->setTargeted(true);
            zone->show();
        }
        pictures.save("three-targeted", shelf);
        button(*shelf.view, "Clear All")->click();
        pictures.save("clear", shelf);
    }
    {
        ShelfViewFixture shelf;
        shelf.addThreeFiles();
        const std::string path = shelf.addFile("gone.txt", 0);
        shelf.addFile("العربية والعبرية עברית.txt", 17);
        shelf.addFile("👩‍👩‍👧‍👦 family 🎉.png", 999'950);
        shelf.files.removeItem(*FileURL::fromPath(path));
        shelf.manager->refreshAvailability();
        shelf.dispatch.runAll();
        shelf.open();
        pictures.save("missing", shelf);
    }
    {
        ShelfViewFixture shelf;
        shelf.addFiles(18);
        shelf.viewModel->addFileURLs(shelf.makeFiles(5, 100));
        shelf.room = 520;
        shelf.open();
        pictures.save("full-banner", shelf);
        button(*shelf.view, "Dismiss")->click();
        shelf.room = QWIDGETSIZE_MAX;
        pictures.save("full", shelf);
    }
    {
        ShelfViewFixture shelf;
        shelf.addThreeFiles();
        shelf.manager->addFiles(shelf.makeFiles(9));
        shelf.open();
        pictures.save("loading", shelf);
    }
}

void paintUpdates(Pictures& pictures) {
    UpdateView view([](UpdateChoice) {});
    UpdateStatus status{.programName = "stowpocket", .runningVersion = "1.0"};
    status.canInstall = true;
    status.item.length = 28'400'000;
    const auto paint = [&](UpdateState state, const char* name) {
        status.state = state;
        view.present(presentationOf(status));
        view.bringToFront();
        pictures.save(name, view);
    };
    paint(UpdateState::upToDate, "update-none");
    paint(UpdateState::checking, "update-checking");
    status.item.displayVersion = status.item.version = "1.2";
    status.item.notes =
        "What is new\n\n\u2022 Files that were renamed while the program was not running are found again.\n"
        "\u2022 The shelf opens faster.\n\nThanks to everybody who reported faults.";
    paint(UpdateState::offered, "update-offered");
    status.received = 9'100'000;
    paint(UpdateState::downloading, "update-downloading");
    paint(UpdateState::verifying, "update-verifying");
    paint(UpdateState::installing, "update-installing");
    status.failure = UpdateFailure::badSignature;
    paint(UpdateState::failed, "update-failed");
    status.canInstall = false;
    status.item.pageURL = "https://stowpocket.example/";
    status.item.notes.clear();
    paint(UpdateState::offered, "update-page");
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        QTextStream(stderr) << "usage: shelf_pictures FOLDER [SUFFIX]\n";
        return 2;
    }
    QDir().mkpath(arguments[1]);
    const QString suffix = arguments.value(2, QStringLiteral("1x"));
    Pictures light(arguments[1], QStringLiteral("light-") + suffix);
    paintAll(light);
    paintUpdates(light);
    QApplication::setPalette(Theme::darkPalette());
    Pictures dark(arguments[1], QStringLiteral("dark-") + suffix);
    paintAll(dark);
    paintUpdates(dark);
}
