// SPDX-License-Identifier: MIT
#include "input/PrivateDisplay.h"

#include "platform/linux/input/XcbSession.h"
#include "x11/ComesTrue.h"

#include <QString>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace stowpocket {
namespace {

constexpr auto busConfiguration = R"(<busconfig><type>session</type><listen>unix:path=%1/bus</listen>
<servicedir>%1/services</servicedir><auth>EXTERNAL</auth><policy context="default"><allow send_destination="*"/>
<allow eavesdrop="true"/><allow own="*"/></policy></busconfig>)";

}  // namespace

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
    const std::vector<std::pair<const char*, std::string>> environment{{"HOME", home_},
                                                                       {"XDG_CONFIG_HOME", home_ / "config"},
                                                                       {"XDG_DATA_HOME", home_ / "data"},
                                                                       {"XDG_CACHE_HOME", home_ / "cache"},
                                                                       {"XDG_RUNTIME_DIR", home_ / "run"},
                                                                       {"QT_QPA_PLATFORM", "xcb"},
                                                                       {"GDK_BACKEND", "x11"},
                                                                       {"GIO_USE_VFS", "local"},
                                                                       {"NO_AT_BRIDGE", "1"}};
    for (const auto& [name, value] : environment)
        setenv(name, value.c_str(), 1);
    const std::string number =
        start(server_, {"Xvfb", "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset", "-displayfd", ""});
    setenv("DISPLAY", (":" + number).c_str(), 1);
    startBus();
}

PrivateDisplay::~PrivateDisplay() {
    windowManager_.reset();
    bus_.reset();
    server_.reset();
    std::filesystem::remove_all(home_);
}

std::string PrivateDisplay::start(std::unique_ptr<Program>& program, std::vector<std::string> command) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        std::abort();
    command.back() += std::to_string(ends[1]);
    program = std::make_unique<Program>(std::move(command), ends[1]);
    close(ends[1]);
    std::string line;
    for (char next = 0; read(ends[0], &next, 1) == 1 && next != '\n';)
        line += next;
    close(ends[0]);
    return line;
}

/// The settings service of the Xfce programs is all that this bus starts.
void PrivateDisplay::startBus() {
    std::error_code missing;
    std::filesystem::copy("/usr/share/dbus-1/services/org.xfce.Xfconf.service", home_ / "services", missing);
    const std::filesystem::path configuration = home_ / "bus.conf";
    std::ofstream(configuration)
        << QString::fromLatin1(busConfiguration).arg(QString::fromStdString(home_.string())).toStdString();
    const std::string address =
        start(bus_, {"dbus-daemon", "--config-file=" + configuration.string(), "--nofork", "--print-address="});
    setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
}

void PrivateDisplay::startWindowManager() {
    windowManager_ = std::make_unique<Program>(std::vector<std::string>{"openbox"});
    const std::unique_ptr<XcbSession> session = XcbSession::open();
    const bool isReady = comesTrue([&session] {
        const xcb_atom_t managed = session->atom("_NET_SUPPORTING_WM_CHECK");
        return !session->property(session->root(), managed, 4).bytes.empty();
    });
    if (!isReady)
        std::abort();
}

}  // namespace stowpocket
