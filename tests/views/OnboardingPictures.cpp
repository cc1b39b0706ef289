// SPDX-License-Identifier: MIT
// Paints the first-run window at some moments into PNG files, for people to look at.
//   onboarding_pictures FOLDER [SUFFIX]
#include "OnboardingFixture.h"

#include <QDir>
#include <QTextStream>

using namespace stowpocket;

namespace {

/// Shows one screen from its beginning on, at each of these times.
void paint(OnboardingFixture& window, const QString& start, const QString& end, std::initializer_list<double> times) {
    double passed = 0;
    for (const double time : times) {
        window.clock->advance(Seconds(time - passed));
        passed = time;
        const QString path = start + QString::number(time, 'f', 2) + end;
        if (!window.view.grab().save(path))
            QTextStream(stderr) << "cannot write " << path << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        QTextStream(stderr) << "usage: onboarding_pictures FOLDER [SUFFIX]\n";
        return 2;
    }
    QDir().mkpath(arguments[1]);
    const QString end = QStringLiteral("-%1.png").arg(arguments.value(2, QStringLiteral("1x")));
    OnboardingFixture window;
    paint(window, arguments[1] + QStringLiteral("/welcome-"), end, {0.1, 0.4, 0.8, 1.2, 3.3});
    window.button("Get Started")->click();
    paint(window, arguments[1] + QStringLiteral("/closing-"), end, {0.3, 0.7, 1.1, 1.6, 2.2, 3.3, 4.29});
}
