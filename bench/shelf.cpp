// SPDX-License-Identifier: MIT
// The whole program on a real display, timed from inside: how long the main thread is ever busy, and how soon the
// popover shows its first frame.
//   bench_shelf FOLDER     with as many files as FOLDER holds; the preferences must allow for them
// Prints "name: value unit" a line.
#include "app/linux/LinuxServices.h"
#include "platform/linux/pictures/ImageDecoderProcess.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QtGui/qguiapplication_platform.h>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <xcb/xcb.h>

using namespace stowpocket;
using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// Times every event that the main thread handles, and notices the first painting of the popover.
class TimedApplication : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        // Looked at before: handling an event may be the end of its receiver.
        const auto* const widget = qobject_cast<QWidget*>(receiver);
        const bool isPopoverPaint = event->type() == QEvent::Paint && widget != nullptr && widget->isWindow() &&
                                    widget->windowTitle() == QStringLiteral("stowpocket shelf");
        const bool isOutermost = depth_ == 0;
        const Clock::time_point start = Clock::now();
        ++depth_;
        const bool handled = QApplication::notify(receiver, event);
        --depth_;
        if (isOutermost)
            longest_ = std::max<Milliseconds>(longest_, Clock::now() - start);
        popoverPainted_ |= isPopoverPaint;
        return handled;
    }

    Milliseconds takeLongest() { return std::exchange(longest_, {}); }
    bool takePopoverPainted() { return std::exchange(popoverPainted_, false); }

private:
    int depth_ = 0;
    bool popoverPainted_ = false;
    Milliseconds longest_{};
};

/// Runs the event loop until the condition holds; ends the program when it never does.
void runUntil(const std::function<bool()>& condition) {
    const Clock::time_point deadline = Clock::now() + 60s;
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        if (Clock::now() > deadline) {
            std::fputs("bench_shelf: gave up waiting\n", stderr);
            std::exit(1);
        }
    }
}

/// Lets what is on its way arrive: thumbnails, saves, the panel's answers.
void settle() {
    bool isOver = false;
    QTimer::singleShot(1s, [&isOver] { isOver = true; });
    runUntil([&isOver] { return isOver; });
}

class Bench {
public:
    Bench(TimedApplication& application, const QString& folder)
        : application_(application),
          services_(LinuxServices::make()),
          delegate_(AppDelegate::make(services_->forApp())) {
        for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files, QDir::Name))
            files_.push_back(*FileURL::fromPath(file.absoluteFilePath().toStdString()));
        delegate_->applicationDidFinishLaunching();
        settle();
    }

    void run() {
        print("files", static_cast<double>(files_.size()), "");
        print("longest slice while they are added, popover never opened", add().count(), "ms");
        settle();
        print("popover, first frame", showPopover().count(), "ms");
        settle();
        std::vector<double> warm;
        for (int round = 0; round < 21; ++round) {
            delegate_->closePopover();
            settleShortly();
            warm.push_back(showPopover().count());
        }
        std::ranges::sort(warm);
        print("popover, warm frame, median of 21", warm[warm.size() / 2], "ms");
        print("popover, warm frame, slowest of 21", warm.back(), "ms");

        ShelfManager& shelf = delegate_->shelfViewModel().shelfManager();
        const Clock::time_point start = Clock::now();
        shelf.refreshAvailability();
        print("refresh, call", Milliseconds(Clock::now() - start).count(), "ms");
        static_cast<void>(application_.takeLongest());
        settle();
        print("refresh, longest slice until its answer is in", application_.takeLongest().count(), "ms");

        shelf.clear();
        settle();
        print("longest slice while they are added, popover open", add().count(), "ms");
    }

private:
    static void print(const char* name, double value, const char* unit) {
        std::printf("%s: %.3g %s\n", name, value, unit);
    }

    static void settleShortly() {
        for (int round = 0; round < 20; ++round)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }

    /// The longest slice, the call itself among them.
    Milliseconds add() {
        ShelfManager& shelf = delegate_->shelfViewModel().shelfManager();
        static_cast<void>(application_.takeLongest());
        const Clock::time_point start = Clock::now();
        delegate_->shelfViewModel().addFileURLs(files_);
        const Milliseconds call = Clock::now() - start;
        runUntil([&] { return shelf.items().size() == files_.size(); });
        settle();
        return std::max(call, application_.takeLongest());
    }

    /// From the request to the server having drawn the first frame.
    Milliseconds showPopover() {
        static_cast<void>(application_.takePopoverPainted());
        const Clock::time_point start = Clock::now();
        delegate_->showPopover(Animation::none);
        runUntil([this] { return application_.takePopoverPainted(); });
        auto* const connection = application_.nativeInterface<QNativeInterface::QX11Application>()->connection();
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));  // NOLINT
        return Clock::now() - start;
    }

    TimedApplication& application_;
    std::unique_ptr<LinuxServices> services_;
    std::shared_ptr<AppDelegate> delegate_;
    std::vector<FileURL> files_;
};

}  // namespace

int main(int argc, char** argv) {
    if (isImageDecoderProcess(argc, argv))
        return runImageDecoder(argc, argv);
    TimedApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(QStringLiteral("stowpocket"));
    if (argc != 2) {
        std::fputs("usage: bench_shelf FOLDER\n", stderr);
        return 2;
    }
    Bench(application, QString::fromLocal8Bit(argv[1])).run();
    return 0;
}
