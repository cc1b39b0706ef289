// SPDX-License-Identifier: MIT
#include "input/PrivateDisplay.h"

#include "platform/linux/input/XcbSession.h"

#include <QEventLoop>
#include <QTimer>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace stowpocket {
namespace {

/// Far beyond what any wait takes: reaching it is a failure.
constexpr int patienceMs = 10'000;
constexpr int lookAgainMs = 2;

constexpr auto busConfiguration = R"(<busconfig><type>session</type><listen>unix:path=%1/bus</listen>
<servicedir>%1/services</servicedir><auth>EXTERNAL</auth><policy context="default"><allow send_destination="*"/>
<allow eavesdrop="true"/><allow own="*"/></policy></busconfig>)";

}  // namespace

bool waitFor(const std::function<bool()>& condition) {
    QEventLoop loop;
    QTimer look;
    bool holds = false;
    QObject::connect(&look, &QTimer::timeout, [&] {
        holds = condition();
        if (holds)
            loop.quit();
    });
    look.start(lookAgainMs);
    QTimer::singleShot(patienceMs, &loop, &QEventLoop::quit);
    loop.exec();
    return holds;
}

Program::Program(std::vector<std::string> command, int inherited) : pid_(fork()) {
    if (pid_ != 0)
        return;
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (inherited >= 0)
        fcntl(inherited, F_SETFD, 0);
    const std::string log = PrivateDisplay::home() / "programs.log";
    const int output = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    std::vector<char*> arguments;
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    execvp(arguments.front(), arguments.data());
    _exit(127);
}

Program::~Program() {
    if (pid_ <= 0)
        return;
    kill(pid_, SIGCONT);
    kill(pid_, SIGTERM);
    static_cast<void>(wait());
}

int Program::wait() {
    int status = 0;
    waitpid(std::exchange(pid_, 0), &status, 0);
    return status;
}

PrivateDisplay::PrivateDisplay() {
    std::string folder = std::filesystem::temp_directory_path() / "input-test-XXXXXX";
    home_ = mkdtemp(folder.data());
    for (const char* name : {"services", "config", "data", "cache", "run"})
        std::filesystem::create_directory(home_ / name, home_);
    std::filesystem::permissions(home_ / "run", std::filesystem::perms::owner_all);
    const std::vector<std::pair<const char*, std::string>> environment{
        {"HOME", home_},
        {"XDG_CONFIG_HOME", home_ / "config"},
        {"XDG_DATA_HOME", home_ / "data"},
        {"XDG_CACHE_HOME", home_ / "cache"},
        {"XDG_RUNTIME_DIR", home_ / "run"},
        {"QT_QPA_PLATFORM", "xcb"},
        {"GDK_BACKEND", "x11"},
        {"GIO_USE_VFS", "local"},
        {"NO_AT_BRIDGE", "1"},
        {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (home_ / "bus").string()}};
    for (const auto& [name, value] : environment)
        setenv(name, value.c_str(), 1);
    startServer();
    startBus();
}

PrivateDisplay::~PrivateDisplay() {
    windowManager_.reset();
    bus_.reset();
    server_.reset();
    std::filesystem::remove_all(home_);
}

void PrivateDisplay::startServer() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        std::abort();
    server_ =
        std::make_unique<Program>(std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(ends[1]), "-screen",
                                                           "0", "1280x800x24", "-nolisten", "tcp", "-noreset"},
                                  ends[1]);
    close(ends[1]);
    std::string number;
    for (char digit = 0; read(ends[0], &digit, 1) == 1 && digit != '\n';)
        number += digit;
    close(ends[0]);
    setenv("DISPLAY", (":" + number).c_str(), 1);
}

/// The settings service of the Xfce programs is all that this bus starts.
void PrivateDisplay::startBus() {
    std::error_code missing;
    std::filesystem::copy("/usr/share/dbus-1/services/org.xfce.Xfconf.service", home_ / "services", missing);
    const std::filesystem::path configuration = home_ / "bus.conf";
    std::ofstream(configuration)
        << QString::fromLatin1(busConfiguration).arg(QString::fromStdString(home_.string())).toStdString();
    bus_ = std::make_unique<Program>(
        std::vector<std::string>{"dbus-daemon", "--config-file=" + configuration.string(), "--nofork"});
}

void PrivateDisplay::startWindowManager() {
    windowManager_ = std::make_unique<Program>(std::vector<std::string>{"openbox"});
    const std::unique_ptr<XcbSession> session = XcbSession::open();
    const bool isReady = waitFor([&session] {
        const xcb_atom_t managed = session->atom("_NET_SUPPORTING_WM_CHECK");
        return !session->property(session->root(), managed, 4).bytes.empty() &&
               std::filesystem::exists(home_ / "bus");
    });
    if (!isReady)
        std::abort();
}

}  // namespace stowpocket
