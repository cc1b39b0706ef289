// SPDX-License-Identifier: MIT
#include "main/linux/CommandProcess.h"

#include "cli/CommandText.h"
#include "platform/linux/preferences/LinuxPreferenceStore.h"
#include "platform/linux/session/BusRunningShelf.h"
#include "platform/linux/session/OwnProcess.h"
#include "platform/linux/session/ProgramLock.h"
#include "services/MainBundle.h"

#include <QDBusMessage>
#include <QSysInfo>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace stowpocket {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> targetOfLink(const std::string& path) {
    std::error_code error;
    if (!fs::is_symlink(fs::symlink_status(path, error)))
        return std::nullopt;
    const fs::path target = fs::canonical(path, error);
    return error ? std::nullopt : std::optional(target.native());
}

bool fileExists(const FileURL& file) {
    std::error_code error;
    return fs::exists(file.path(), error);
}

std::string environment(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? std::string() : std::string(value);
}

}  // namespace

std::vector<std::string> argumentsOf(int argc, char** argv) {
    return argc < 1 ? std::vector<std::string>() : std::vector<std::string>(argv + 1, argv + argc);
}

CommandEnvironment commandEnvironment(std::string version) {
    std::error_code error;
    const fs::path workingDirectory = fs::current_path(error);
    return {.workingDirectory = error ? std::string() : workingDirectory.native(),
            .localHost = QSysInfo::machineHostName().toStdString(),
            .version = std::move(version),
            .linkTarget = targetOfLink,
            .fileExists = fileExists};
}

bool fileIsThere(const std::string& argument) {
    const CommandEnvironment here = commandEnvironment({});
    const std::optional<FileURL> file =
        fileOfArgument(argument, here.workingDirectory, here.localHost, here.linkTarget);
    return file && here.fileExists(*file);
}

StartupTokens startupTokens() {
    return {.activationToken = environment("XDG_ACTIVATION_TOKEN"), .startupID = environment("DESKTOP_STARTUP_ID")};
}

int finish(const CommandResult& result) {
    std::fwrite(result.out.data(), 1, result.out.size(), stdout);
    std::fwrite(result.err.data(), 1, result.err.size(), stderr);
    return static_cast<int>(result.code);
}

int runCommandOnBus(const Command& command, const std::string& version, const StartupTokens& tokens) {
    const std::optional<std::string> preferences = LinuxPreferenceStore::defaultPath();
    BusRunningShelf shelf(QDBusConnection::sessionBus(), ownExecutable(), tokens,
                          preferences ? ProgramLock::pathBeside(*preferences) : std::string());
    return finish(runCommand(command, commandEnvironment(version), shelf));
}

int refuseSecondProgram(const std::string& holder) {
    const std::string text = printable(runsElsewhereText(holder));
    if (::isatty(STDERR_FILENO) == 0) {
        QDBusMessage notice = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/org/freedesktop/Notifications"),
            QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
        notice << QStringLiteral("stowpocket") << 0U << QString::fromLatin1(bundleIdentifier.data())
               << QStringLiteral("stowpocket") << QString::fromStdString(text) << QStringList() << QVariantMap()
               << -1;
        constexpr int noticeTimeoutMs = 1000;
        QDBusConnection::sessionBus().call(notice, QDBus::Block, noticeTimeoutMs);
    }
    return finish({.code = ExitCode::runsElsewhere, .err = "stowpocket: " + text + '\n'});
}

void openFilesAtStart(const Command& command, const std::string& version, ShelfCommands& commands,
                      const StartupTokens& tokens) {
    if (command.operands.empty())
        return;
    CommandResult result;
    std::vector<std::string> urls;
    for (const FileURL& file : filesToAdd(command, commandEnvironment(version), result))
        urls.push_back(file.string());
    static_cast<void>(finish(result));
    commands.add(urls, [](const std::vector<AddOutcome>&, const std::optional<std::string>&) {});
    commands.perform(ShelfAction::show, tokens, [](const std::optional<std::string>&) {});
}

}  // namespace stowpocket
