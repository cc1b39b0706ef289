// SPDX-License-Identifier: MIT
#include "platform/linux/updates/InstalledProgram.h"

#include "platform/linux/files/DurableFile.h"
#include "platform/linux/files/Folders.h"
#include "platform/linux/preferences/PropertyList.h"
#include "platform/linux/session/OwnProcess.h"

#include <QFile>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace stowpocket {

std::string installedFile(const std::string& relativePath) {
    return parentFolder(parentFolder(runningFile())).append("/").append(relativePath);
}

MainBundle installedBundle() {
    MainBundle bundle{FileURL::fromPath(ownExecutable()).value_or(*FileURL::fromPath("/")), {}};
    QFile file(QString::fromStdString(installedFile("share/stowpocket/Info.plist")));
    const std::string text = file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    if (const std::optional<PropertyValue> list = parsePropertyList(text); list && list->dictionary() != nullptr)
        bundle.infoDictionary = *list->dictionary();
    return bundle;
}

std::optional<std::string> runningAppImage() {
    const char* const appImage = std::getenv("APPIMAGE");
    const std::string executable = ownExecutable();
    return appImage != nullptr && !executable.empty() && executable == appImage ? std::optional(executable)
                                                                                : std::nullopt;
}

namespace {

void execute(const std::string& program) {
    ::execl(program.c_str(), program.c_str(), nullptr);
}

std::string hiddenPath(const std::string& program, const char* ending) {
    const std::string target = linkTarget(program);
    return parentFolder(target) + "/." + target.substr(target.rfind('/') + 1) + ending;
}

}  // namespace

std::string downloadPath(const std::string& program) {
    return hiddenPath(program, ".download");
}

std::string replacedPath(const std::string& program) {
    return linkTarget(program) + ".old";
}

std::string startedPath(const std::string& program) {
    return hiddenPath(program, ".started");
}

void tellEndInOrder() {
    // Qt calls exit() when the X server ends.
    std::atexit([] {
        if (const std::optional<std::string> image = runningAppImage())
            ::unlink(startedPath(*image).c_str());
    });
}

int becomeReplaced(const std::string& program) {
    // An AppImage stays mounted while any file that it passed on is open.
    ::closefrom(STDERR_FILENO + 1);
    execute(program);
    if (std::rename(replacedPath(program).c_str(), linkTarget(program).c_str()) == 0)
        execute(program);
    return EXIT_FAILURE;
}

}  // namespace stowpocket
