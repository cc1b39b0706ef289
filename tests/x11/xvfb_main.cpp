// SPDX-License-Identifier: MIT
#include <QApplication>

#include <array>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// An X server on a display number of its own choice, which ends with this process whatever happens to it.
class Xvfb {
public:
    Xvfb() {
        if (::pipe(answer_.data()) != 0)
            return;
        process_ = ::fork();
        if (process_ == 0)
            run();
        ::close(answer_[1]);
        std::array<char, 16> text{};
        if (::read(answer_[0], text.data(), text.size() - 1) > 0)
            number_ = QByteArray(text.data()).trimmed();
        ::close(answer_[0]);
    }
    Xvfb(const Xvfb&) = delete;
    Xvfb& operator=(const Xvfb&) = delete;
    ~Xvfb() {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }
    /// Empty when the server did not start.
    [[nodiscard]] const QByteArray& number() const { return number_; }

private:
    [[noreturn]] void run() const {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        const QByteArray descriptor = QByteArray::number(answer_[1]);
        ::execlp("Xvfb", "Xvfb", "-displayfd", descriptor.constData(), "-screen", "0", "800x600x24", "-nolisten",
                 "tcp", "-noreset", nullptr);
        std::perror("Xvfb");
        ::_exit(1);
    }

    std::array<int, 2> answer_{-1, -1};
    pid_t process_ = -1;
    QByteArray number_;
};

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const Xvfb server;
    if (server.number().isEmpty())
        return EXIT_FAILURE;
    qputenv("DISPLAY", ":" + server.number());
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
