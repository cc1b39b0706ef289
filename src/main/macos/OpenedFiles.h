// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <QObject>

#include <functional>
#include <vector>

namespace stowpocket {

/// The files that the user has the program open, `open -a stowpocket FILES` for one. The system tells of one after
/// the other; those that come together are delivered together.
class OpenedFiles : public QObject {
public:
    using Delivery = std::function<void(const std::vector<FileURL>&)>;

    /// Files may come as soon as the main loop runs; `deliver` runs later than all that was queued there before.
    explicit OpenedFiles(Delivery deliver);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void arrived(const QString& path);

    const Delivery deliver_;
    std::vector<FileURL> files_;
};

}  // namespace stowpocket
