// SPDX-License-Identifier: MIT
#pragma once

#include "services/OtherPrograms.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

#include <chrono>

namespace stowpocket {

/// Files are opened by the command `gio open`, which starts the application that the desktop's settings name; no
/// shell reads their names. Of a link file the page is opened. The file manager and the previewer are called on the
/// session bus.
class DesktopFileOpener : public FileOpener {
public:
    using Launch = std::function<void(const QStringList& urls, Completion completion)>;

    /// `launch` opens files and folders, if not by the desktop's command. A file manager that has not answered within
    /// `patience` counts as hanging.
    explicit DesktopFileOpener(QDBusConnection bus, Launch launch = {},
                               std::chrono::milliseconds patience = std::chrono::seconds(2));

    void open(std::span<const FileURL> files, Completion completion) override;
    void showInFolder(std::span<const FileURL> files) override;
    void preview(const FileURL& file) override;

private:
    void launchByCommand(const QStringList& urls, const Completion& completion);

    const QDBusConnection bus_;
    const Launch launch_;
    const std::chrono::milliseconds patience_;
    /// Answers that come after the end of this object are dropped.
    QObject context_;
};

}  // namespace stowpocket
