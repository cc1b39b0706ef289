// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/pictures/IconTheme.h"
#include "services/Pictures.h"

#include <QImage>
#include <QMimeType>
#include <QString>

namespace stowpocket {

/// The name of the bundled drawing that suits `type` best; "file" if none does.
[[nodiscard]] QString bundledIconName(const QMimeType& type);

/// The bundled drawing called `name`, for desktops without an icon theme, `side` pixels each way. Main thread.
[[nodiscard]] QImage bundledIcon(const QString& name, int side);

/// Icons by the type that the name of a file suggests: from the icon theme, or else the bundled drawings. The file
/// itself is never opened, and only what the kernel has in memory about it is used, so a dead mount costs nothing.
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
