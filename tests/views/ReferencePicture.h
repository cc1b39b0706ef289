// SPDX-License-Identifier: MIT
#pragma once

#include "views/Theme.h"

#include <QWidget>

namespace stowpocket {

/// For as long as it lives, views look the same on every machine: one font, unhinted, and colours of our own.
class FixedLook {
public:
    explicit FixedLook(Appearance appearance);
    ~FixedLook();
    FixedLook(const FixedLook&) = delete;
    FixedLook& operator=(const FixedLook&) = delete;

private:
    const QFont font_;
};

/// Compares the widget, as it is painted at one pixel a point, with tests/views/pictures/<name>.png: the edges of
/// what is drawn may be smoothed otherwise, but nothing may be missing, moved or of another colour. What was painted
/// instead is left beside the test as <name>.png. With STOWPOCKET_UPDATE_PICTURES set the picture is written anew:
/// look at it before it is committed.
void expectLooksLike(QWidget& widget, const std::string& name);

}  // namespace stowpocket
