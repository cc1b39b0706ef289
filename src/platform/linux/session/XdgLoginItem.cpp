// SPDX-License-Identifier: MIT
#include "platform/linux/session/XdgLoginItem.h"

#include "foundation/Text.h"
#include "platform/linux/files/DurableFile.h"
#include "platform/linux/files/Folders.h"
#include "services/MainBundle.h"

#include <QFile>
#include <QLoggingCategory>
#include <QMap>

#include <filesystem>

namespace stowpocket {
namespace {

Q_LOGGING_CATEGORY(sessionLog, "stowpocket.session")

namespace fs = std::filesystem;

/// No desktop writes longer files.
constexpr qint64 longestEntry = qint64{64} * 1024;

using Values = QMap<QByteArray, QByteArray>;

QString fileName(const std::string& path) {
    return QFile::decodeName(QByteArray::fromStdString(path));
}

/// The values in the group [Desktop Entry], as they are written there.
Values readEntry(const std::string& path) {
    // Reading a pipe might never end.
    std::error_code error;
    QFile file(fileName(path));
    if (!fs::is_regular_file(path, error) || !file.open(QIODevice::ReadOnly))
        return {};
    Values values;
    bool isInGroup = false;
    for (const QByteArray& line : file.read(longestEntry).split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (line.startsWith('['))
            isInGroup = line.trimmed() == "[Desktop Entry]";
        else if (isInGroup && equals > 0)
            values.insert(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
    }
    return values;
}

/// `text` as it is written behind a key.
std::string escaped(std::string_view text) {
    constexpr std::string_view characters = "\\\n\t\r";
    constexpr std::string_view letters = "\\ntr";
    std::string written;
    for (const char character : text) {
        const std::size_t escape = characters.find(character);
        written += escape == std::string_view::npos ? std::string(1, character) : std::string{'\\', letters[escape]};
    }
    return written;
}

/// The command that runs `program`, whatever characters are in its name.
std::string commandOf(std::string_view program) {
    std::string quoted = "\"";
    for (const char character : program) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos)
            quoted += '\\';
        quoted.append(character == '%' ? 2 : 1, character);
    }
    return escaped(quoted + '"');
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
           commandOf(executable) +
           "\n"
           // The session ignores the entry without the program, for example after its package was removed.
           "TryExec=" +
           escaped(executable) +
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
    const Values entry = readEntry(path_);
    const QByteArray own = QByteArray::fromStdString(commandOf(executable_));
    const QByteArray program = QByteArray::fromStdString(escaped(executable_));
    const QByteArray command = entry.value("Exec");
    const bool startsThis = command == own || command.startsWith(own + ' ');
    if (!startsThis || entry.value("TryExec", program) != program)
        return Status::notRegistered;
    const bool isOff =
        entry.value("Hidden").toLower() == "true" || entry.value("X-GNOME-Autostart-enabled").toLower() == "false";
    return isOff ? Status::requiresApproval : Status::enabled;
}

bool XdgLoginItem::registerItem() {
    // The format is always UTF-8, so a desktop could not read another name.
    if (folder_.empty() || !executable_.starts_with('/') || validUtf8(executable_) != executable_)
        return false;
    // Only the user may write there, since whatever is there gets started. An existing folder or link is left as it
    // is.
    static_cast<void>(makeFolders(folder_));
    // The main thread does not wait for the disk. A lost entry is written again at the next start.
    const std::error_code error = replaceFile(path_, entryStarting(executable_), Durability::program);
    if (error)
        qCWarning(sessionLog) << "cannot register to start with the session:" << fileName(path_)
                              << QString::fromLocal8Bit(error.message().c_str());
    return !error && status() == Status::enabled;
}

bool XdgLoginItem::unregisterItem() {
    std::error_code error;
    fs::remove(path_, error);
    return folder_.empty() || !fs::exists(fs::symlink_status(path_, error));
}

}  // namespace stowpocket
