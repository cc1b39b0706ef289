// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

namespace stowpocket {

/// A program that ends with this object, at the latest.
class Program {
public:
    /// `inherited` stays open in the program; -1 for none.
    explicit Program(std::vector<std::string> command, int inherited = -1);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    [[nodiscard]] pid_t pid() const { return pid_; }
    /// Waits for it to end by itself; its exit status.
    [[nodiscard]] int wait();

private:
    pid_t pid_ = 0;
};

/// An X server with a window manager, a session bus and a home folder of their own. The environment of this process
/// leads there.
class PrivateDisplay {
public:
    PrivateDisplay();
    ~PrivateDisplay();
    PrivateDisplay(const PrivateDisplay&) = delete;
    PrivateDisplay& operator=(const PrivateDisplay&) = delete;

    [[nodiscard]] static const std::filesystem::path& home() { return home_; }
    /// Call once this process can watch the display.
    void startWindowManager();

private:
    /// Appends to the command where it shall write how it is reached, and returns that.
    [[nodiscard]] static std::string start(std::unique_ptr<Program>& program, std::vector<std::string> command);
    void startBus();

    static inline std::filesystem::path home_;
    std::unique_ptr<Program> server_;
    std::unique_ptr<Program> bus_;
    std::unique_ptr<Program> windowManager_;
};

}  // namespace stowpocket
