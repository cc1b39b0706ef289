// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtDrops.h"

namespace stowpocket {

/// A drop that the test makes up.
class FakeDrops : public IncomingDrops {
public:
    [[nodiscard]] const ReceivedDrop& received() const override { return drop; }
    [[nodiscard]] bool promisesFiles(const QMimeData&) const override { return isPromise; }
    [[nodiscard]] std::shared_ptr<FilePromiseReceiver> promiseReceiver() override { return nullptr; }
    [[nodiscard]] std::shared_ptr<ItemProvider> promiseProvider() override { return nullptr; }

    ReceivedDrop drop;
    bool isPromise = false;
};

}  // namespace stowpocket
