// SPDX-License-Identifier: MIT
#include <QApplication>

#include <array>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

/// A program that serves the tests and writes into a pipe, once it is ready, how it is reached. It ends with this
/// process whatever happens to it.
class Server {
public:
    /// `arguments` may name the pipe as "%".
    explicit Server(const QList<QByteArray>& arguments) {
        if (::pipe(answer_.data()) != 0)
            return;
        process_ = ::fork();
        if (process_ == 0)
            run(arguments);
        ::close(answer_[1]);
        std::array<char, 256> text{};
        if (::read(answer_[0], text.data(), text.size() - 1) > 0)
            address_ = QByteArray(text.data()).trimmed();
        ::close(answer_[0]);
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server() {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }
    /// Empty when it did not start.
    [[nodiscard]] const QByteArray& address() const { return address_; }

private:
    [[noreturn]] void run(QList<QByteArray> arguments) const {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        std::vector<char*> raw;
        for (QByteArray& argument : arguments) {
            argument.replace("%", QByteArray::number(answer_[1]));
            raw.push_back(argument.data());
        }
        raw.push_back(nullptr);
        ::execvp(raw.front(), raw.data());
        std::perror(raw.front());
        ::_exit(1);
    }

    std::array<int, 2> answer_{-1, -1};
    pid_t process_ = -1;
    QByteArray address_;
};

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const Server screen({"Xvfb", "-displayfd", "%", "-screen", "0", "800x600x24", "-nolisten", "tcp", "-noreset"});
    const Server bus({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=%"});
    if (screen.address().isEmpty() || bus.address().isEmpty())
        return EXIT_FAILURE;
    qputenv("DISPLAY", ":" + screen.address());
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address());
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
