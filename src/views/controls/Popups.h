// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

class QPoint;

namespace stowpocket {

/// A question that covers a view until it is answered: nothing below it can be clicked, dropped on or reached by Tab.
/// Escape, or hiding the view, counts as the last button, which cancels. It deletes itself when answered.
class AlertView : public QWidget {
public:
    struct Answer {
        enum class Role { destructive, cancel };
        QString text;
        Role role;
        std::function<void()> action;
    };

    AlertView(QWidget& below, const QString& title, const QString& message, std::vector<Answer> answers);
    /// Shows the question and gives it the keyboard focus.
    void open();
    [[nodiscard]] bool isAnswered() const { return isAnswered_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QLayout* buttonRow();
    void finish(const std::function<void()>& action);

    QWidget& below_;
    const std::vector<Answer> answers_;
    std::vector<QWidget*> buttons_;
    QPointer<QWidget> focusedBefore_;
    bool isAnswered_ = false;
};

/// Asks whether to do something destructive. Does nothing while `shown`, which holds the question, is unanswered.
void askOnce(QPointer<AlertView>& shown, QWidget& below, const QString& title, const QString& message,
             const QString& destroy, std::function<void()> action);

struct MenuEntry {
    QString title;
    std::function<void()> action;
    bool isEnabled = true;
    /// Whether a line separates it from the entry before.
    bool beginsGroup = false;
};

/// Opens a menu in the desktop's own look at this point of the screen and returns at once. The menu closes with the
/// window of `owner`.
void popUpMenu(QWidget& owner, const QPoint& point, const std::vector<MenuEntry>& entries);

}  // namespace stowpocket
