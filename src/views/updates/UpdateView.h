// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/UpdatePresentation.h"

#include <QWidget>

#include <functional>
#include <vector>

class QBoxLayout;
class QPlainTextEdit;
class QProgressBar;

namespace stowpocket {

class Text;

/// A message in its own window that changes while an update is in progress. Escape and the window's close button give
/// the answer that the presentation defines for them.
class UpdateView : public QWidget {
public:
    using Chosen = std::function<void(UpdateChoice)>;

    explicit UpdateView(Chosen chosen);
    void setPresentation(const UpdatePresentation& presentation);
    void bringToFront();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setButtons(const std::vector<UpdateButton>& buttons);
    void fitHeight();
    bool answerForClosing();

    const Chosen chosen_;
    std::optional<UpdateChoice> onClose_;
    Text* title_;
    Text* message_;
    QPlainTextEdit* notes_;
    QProgressBar* progress_;
    QWidget* spinner_;
    QBoxLayout* buttonRow_;
    std::vector<UpdateButton> shownButtons_;
};

}  // namespace stowpocket
