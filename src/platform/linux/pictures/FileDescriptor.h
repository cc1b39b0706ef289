// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <utility>

namespace stowpocket {

/// An open file, closed when this goes.
class FileDescriptor {
public:
    FileDescriptor() = default;
    /// Takes what a system call answered; negative is none.
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~FileDescriptor() { close(); }

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }
    void close() {
        if (isOpen())
            ::close(std::exchange(number_, -1));
    }

private:
    int number_ = -1;
};

}  // namespace stowpocket
