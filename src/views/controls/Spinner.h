// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

namespace stowpocket {

/// A wheel that turns while something of unknown length goes on. It rests while nobody can see it, and stands still
/// where the desktop asks for reduced motion.
class Spinner : public QWidget {
public:
    Spinner();
    [[nodiscard]] bool isTurning() const { return timer_.isActive(); }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer timer_;
    int step_ = 0;
};

}  // namespace stowpocket
