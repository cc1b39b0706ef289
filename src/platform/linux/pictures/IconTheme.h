// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>

namespace stowpocket {

/// The desktop's icon theme. Outside the large desktops none is set up, though one is mostly installed: then the
/// first one found serves. Loaded at the first question. Main thread.
class IconTheme {
public:
    /// `side` pixels each way, or smaller where the theme has no such size; null when it has no such icon.
    [[nodiscard]] QImage icon(const QString& name, int side);

private:
    bool isReady_ = false;
};

}  // namespace stowpocket
