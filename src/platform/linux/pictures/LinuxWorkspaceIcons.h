// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/pictures/IconTheme.h"
#include "services/Pictures.h"

#include <QImage>
#include <QMimeType>
#include <QString>

namespace stowpocket {

/// The name of our own drawing that suits `type` best; "file" for what has none.
[[nodiscard]] QString bundledIconName(const QMimeType& type);

/// Our own drawing called `name`, for desktops without an icon theme, `side` pixels each way. Main thread.
[[nodiscard]] QImage bundledIcon(const QString& name, int side);

/// Icons by what a file's name says of its type: from the icon theme, or else our own drawings. The file itself is
/// never opened, and only what the kernel remembers of it is asked: a dead mount costs nothing.
class LinuxWorkspaceIcons : public WorkspaceIcons {
public:
    explicit LinuxWorkspaceIcons(const MainScreen& screen);
    [[nodiscard]] Image icon(const FileURL& url) override;
    [[nodiscard]] std::string lowercased(const std::string& extension) const override;

private:
    const MainScreen& screen_;
    IconTheme theme_;
};

}  // namespace stowpocket
