// SPDX-License-Identifier: MIT
#include "platform/qt/QtAlerts.h"

#include <QMessageBox>
#include <QPushButton>

namespace stowpocket {

void QtAlerts::runModal(const InformationalAlert& alert) {
    auto* const box = new QMessageBox(QMessageBox::Information, QString(), QString::fromStdString(alert.messageText));
    box->setInformativeText(QString::fromStdString(alert.informativeText));
    box->addButton(QString::fromStdString(alert.buttonTitle), QMessageBox::AcceptRole);
    box->setTextFormat(Qt::PlainText);
    box->setWindowTitle(box->text());
    box->setWindowModality(Qt::ApplicationModal);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->show();
    box->raise();
    box->activateWindow();
}

}  // namespace stowpocket
