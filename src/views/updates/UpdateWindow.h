// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/UpdatePresentation.h"
#include "services/Windows.h"
#include "updates/UpdateStatus.h"

#include <QWidget>

#include <functional>
#include <memory>
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

/// Deletes a view after the event that it is currently handling.
struct DeleteViewLater {
    void operator()(UpdateView* view) const;
};

/// The update window, which exists only while it is shown.
class QtUpdateWindow : public UpdateWindow {
public:
    void show(const UpdateStatus& status) override;
    void bringToFront() override;
    void close() override { view_.reset(); }
    [[nodiscard]] Signal<UpdateChoice>& chosen() override { return chosen_; }

private:
    Signal<UpdateChoice> chosen_;
    std::unique_ptr<UpdateView, DeleteViewLater> view_;
};

/// Alerts in windows like the update window. `runModal` does not block: it returns before the answer.
class QtAlerts : public Alerts {
public:
    void runModal(const InformationalAlert& alert) override;

private:
    std::unique_ptr<UpdateView, DeleteViewLater> view_;
};

}  // namespace stowpocket
