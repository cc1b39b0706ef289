// SPDX-License-Identifier: MIT
// The whole program on a real display, timed from inside: how long the main thread is ever busy, and how soon the
// popover shows its first frame.
//   bench_shelf FOLDER     with as many files as FOLDER holds; the preferences must allow for them
#include "main/linux/LinuxServices.h"

#include <QAbstractButton>
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

/// How long something took, and how much of that the main thread itself was at work: on a busy machine the first
/// holds other programs' turns too.
struct Duration {
    Milliseconds wall{};
    Milliseconds processor{};

    static Duration now() {
        timespec processor{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &processor);
        return {Clock::now().time_since_epoch(),
                std::chrono::seconds(processor.tv_sec) + std::chrono::nanoseconds(processor.tv_nsec)};
    }
    [[nodiscard]] Duration since(const Duration& start) const {
        return {wall - start.wall, processor - start.processor};
    }
    /// Each of the two as long as in the longer.
    [[nodiscard]] Duration extendedBy(const Duration& other) const {
        return {std::max(wall, other.wall), std::max(processor, other.processor)};
    }
};

/// Times every event that the main thread handles, and notices which windows are painted.
class TimedApplication : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        // Looked at before: handling an event may be the end of its receiver.
        const auto* const widget = qobject_cast<QWidget*>(receiver);
        const bool isWindowPaint = event->type() == QEvent::Paint && widget != nullptr && widget->isWindow();
        const QString painted = isWindowPaint ? widget->windowTitle() : QString();
        const bool isOutermost = depth_ == 0;
        const Duration start = Duration::now();
        ++depth_;
        const bool handled = QApplication::notify(receiver, event);
        --depth_;
        if (isOutermost)
            longest_ = longest_.extendedBy(Duration::now().since(start));
        isAwaitedPainted_ |= isWindowPaint && painted == awaited_;
        return handled;
    }

    Duration takeLongest() { return std::exchange(longest_, {}); }
    void awaitPaintOf(const QString& windowTitle) {
        awaited_ = windowTitle;
        isAwaitedPainted_ = false;
    }
    [[nodiscard]] bool isAwaitedPainted() const { return isAwaitedPainted_; }

private:
    int depth_ = 0;
    QString awaited_;
    bool isAwaitedPainted_ = false;
    Duration longest_;
};

/// Runs the event loop until the condition holds; ends the program when it never does. It sleeps in between, so that
/// waiting for the server is not taken for work, nor takes the processor from it.
void runUntil(const std::function<bool()>& condition) {
    QTimer limit;
    limit.callOnTimeout([] {
        std::fputs("bench_shelf: gave up waiting\n", stderr);
        std::exit(1);
    });
    limit.start(60s);
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
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
        print("longest slice while the files are added, popover never opened", add());
        settle();
        print("popover, first frame", showPopover());
        settle();
        print("popover, warm frame, median of 21", medianWarmFrame());

        ShelfManager& shelf = delegate_->shelfViewModel().shelfManager();
        const Duration start = Duration::now();
        shelf.refreshAvailability();
        print("refresh, call", Duration::now().since(start));
        static_cast<void>(application_.takeLongest());
        settle();
        print("refresh, longest slice until its answer is in", application_.takeLongest());

        shelf.clear();
        settle();
        print("longest slice while the files are added, popover open", add());
        print("settings, first frame", openSettings());
    }

private:
    static void print(const char* name, const Duration& duration) {
        std::printf("%s: %.2f ms, of them %.2f at work\n", name, duration.wall.count(), duration.processor.count());
    }

    Duration medianWarmFrame() {
        std::vector<Duration> frames;
        for (int round = 0; round < 21; ++round) {
            delegate_->closePopover();
            settleShortly();
            frames.push_back(showPopover());
        }
        std::ranges::sort(frames, {}, &Duration::wall);
        return frames[frames.size() / 2];
    }

    static void settleShortly() {
        for (int round = 0; round < 20; ++round)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }

    /// The longest slice, the call itself among them.
    Duration add() {
        ShelfManager& shelf = delegate_->shelfViewModel().shelfManager();
        static_cast<void>(application_.takeLongest());
        const Duration start = Duration::now();
        delegate_->shelfViewModel().addFileURLs(files_);
        const Duration call = Duration::now().since(start);
        runUntil([&] { return shelf.items().size() == files_.size(); });
        settle();
        return call.extendedBy(application_.takeLongest());
    }

    Duration showPopover() {
        return firstFrame(QStringLiteral("stowpocket shelf"), [this] { delegate_->showPopover(Animation::none); });
    }

    /// By the button that the user presses.
    Duration openSettings() {
        const QList<QWidget*> widgets = QApplication::allWidgets();
        const auto found = std::ranges::find(widgets, QStringLiteral("Settings"), &QWidget::accessibleName);
        auto* const button = found == widgets.end() ? nullptr : qobject_cast<QAbstractButton*>(*found);
        if (button == nullptr) {
            std::fputs("bench_shelf: there is no button that opens the settings\n", stderr);
            std::exit(1);
        }
        return firstFrame(QStringLiteral("stowpocket Settings"), [button] { button->click(); });
    }

    /// From the request to the server having drawn the first frame.
    Duration firstFrame(const QString& windowTitle, const std::function<void()>& request) {
        application_.awaitPaintOf(windowTitle);
        const Duration start = Duration::now();
        request();
        runUntil([this] { return application_.isAwaitedPainted(); });
        auto* const connection = application_.nativeInterface<QNativeInterface::QX11Application>()->connection();
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));  // NOLINT
        return Duration::now().since(start);
    }

    TimedApplication& application_;
    std::unique_ptr<LinuxServices> services_;
    std::shared_ptr<AppDelegate> delegate_;
    std::vector<FileURL> files_;
};

}  // namespace

int main(int argc, char** argv) {
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
