// SPDX-License-Identifier: MIT
#include "platform/linux/session/XdgLoginItem.h"

#include "foundation/Utf8.h"
#include "platform/linux/files/DurableFile.h"
#include "platform/linux/files/Folders.h"
#include "platform/linux/session/DesktopEntry.h"
#include "services/MainBundle.h"

#include <QDebug>
#include <QFile>

#include <filesystem>

namespace stowpocket {
namespace {

namespace fs = std::filesystem;

QString fileName(const std::string& path) {
    return QFile::decodeName(QByteArray::fromStdString(path));
}

std::optional<DesktopEntry> readEntry(const std::string& path) {
    // Not a pipe, whose reading might never end.
    std::error_code error;
    QFile file(fileName(path));
    if (!fs::is_regular_file(path, error) || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return parsedDesktopEntry(file.read(qint64{maxDesktopEntrySize} + 1).toStdString());
}

bool hasValue(const DesktopEntry& entry, std::string_view key, std::string_view value) {
    const auto found = entry.find(key);
    return found != entry.end() && asciiLowercased(found->second) == value;
}

std::string entryStarting(const std::string& executable) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=stowpocket\n"
           "Comment=A shelf for files behind an icon in the tray\n"
           "Icon=" +
           std::string(bundleIdentifier) +
           "\n"
           "Exec=" +
           escapedValue(execValue(executable)) +
           "\n"
           // Without the program, say after its package was removed, the session passes the entry over.
           "TryExec=" +
           escapedValue(executable) +
           "\n"
           "Terminal=false\n"
           "StartupNotify=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

}  // namespace

XdgLoginItem::XdgLoginItem(const std::optional<std::string>& configHome, std::string executable)
    : folder_(configHome ? *configHome + "/autostart" : std::string()),
      path_(folder_ + '/' + std::string(bundleIdentifier) + ".desktop"),
      executable_(std::move(executable)) {}

LoginItem::Status XdgLoginItem::status() const {
    if (folder_.empty())
        return Status::notFound;
    const std::optional<DesktopEntry> entry = readEntry(path_);
    if (!entry)
        return Status::notRegistered;
    const auto exec = entry->find("Exec");
    const auto command = exec == entry->end() ? std::nullopt : commandOfExec(exec->second);
    const auto tried = entry->find("TryExec");
    const bool isPassedOver = tried != entry->end() && tried->second != executable_;
    if (!command || command->front() != executable_ || isPassedOver)
        return Status::notRegistered;
    const bool isOff = hasValue(*entry, "Hidden", "true") || hasValue(*entry, "X-GNOME-Autostart-enabled", "false");
    return isOff ? Status::requiresApproval : Status::enabled;
}

bool XdgLoginItem::registerItem() {
    // The format is UTF-8 throughout: a desktop could not read another name.
    if (folder_.empty() || !executable_.starts_with('/') || validUtf8(executable_) != executable_)
        return false;
    // Whoever may write there has programs started; where the folder is somebody's link, it is taken as it is.
    static_cast<void>(makeFolders(folder_));
    // The main thread does not wait for the disk: an entry that is lost is written again at the next start.
    const std::error_code error = replaceFile(path_, entryStarting(executable_), Durability::program);
    if (error)
        qWarning() << "stowpocket: cannot register to start with the session:" << fileName(path_)
                   << QString::fromLocal8Bit(error.message().c_str());
    return !error && status() == Status::enabled;
}

bool XdgLoginItem::unregisterItem() {
    std::error_code error;
    fs::remove(path_, error);
    return folder_.empty() || !fs::exists(fs::symlink_status(path_, error));
}

}  // namespace stowpocket
