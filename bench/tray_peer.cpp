// SPDX-License-Identifier: MIT
// The least that a toolkit program with a tray icon can be: what start-up is measured against.
#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QPixmap picture(22, 22);
    picture.fill(Qt::darkGray);
    QSystemTrayIcon icon{QIcon(picture)};
    icon.show();
    return QApplication::exec();
}
