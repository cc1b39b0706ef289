// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

namespace stowpocket {

class ChoiceButton;

/// A few choices side by side, of which one is made or none.
class SegmentedPicker : public QWidget {
public:
    /// `onChoose` gets the index of what the user chose.
    SegmentedPicker(const QString& accessibleName, const QStringList& choices,
                    const std::function<void(std::size_t)>& onChoose);

    void setChosen(std::optional<std::size_t> index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<ChoiceButton*> segments_;
};

}  // namespace stowpocket
