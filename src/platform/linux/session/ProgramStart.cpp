// SPDX-License-Identifier: MIT
#include "platform/linux/session/ProgramStart.h"

#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QSocketNotifier>
#include <QTimer>

#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <memory>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// A cold start from a slow disk takes a few seconds.
constexpr auto startTimeout = 15s;

/// Answers 0 when the program could not be started.
qint64 startDetached(const std::string& executable) {
    QProcess process;
    process.setProgram(QFile::decodeName(QByteArray::fromStdString(executable)));
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setWorkingDirectory(QStringLiteral("/"));
    qint64 id = 0;
    return process.startDetached(&id) ? id : 0;
}

/// Notices the end of a process that is not a child. Kernels before 5.3 cannot tell: then only the time limit ends
/// the wait.
class ProcessEnd {
public:
    explicit ProcessEnd(qint64 id) : descriptor_(static_cast<int>(::syscall(SYS_pidfd_open, id, 0))) {}
    ProcessEnd(const ProcessEnd&) = delete;
    ProcessEnd& operator=(const ProcessEnd&) = delete;
    ~ProcessEnd() {
        notifier_.reset();
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    template <class Function>
    void then(const Function& function) {
        if (descriptor_ < 0)
            return;
        notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), function);
    }

private:
    const int descriptor_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace

bool startProgramAndAwaitName(const std::string& executable, const QDBusConnection& bus, const QString& name) {
    // Watched before the start, so that the name cannot come unseen.
    const QDBusServiceWatcher watcher(name, bus, QDBusServiceWatcher::WatchForRegistration);
    QEventLoop loop;
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &loop, &QEventLoop::quit);
    QTimer::singleShot(startTimeout, &loop, &QEventLoop::quit);
    const qint64 id = executable.empty() ? 0 : startDetached(executable);
    if (id == 0)
        return false;
    ProcessEnd end(id);
    end.then([&loop] { loop.quit(); });
    if (!bus.interface()->isServiceRegistered(name))
        loop.exec();
    return bus.interface()->isServiceRegistered(name);
}

}  // namespace stowpocket
