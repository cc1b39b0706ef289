// SPDX-License-Identifier: MIT
// Between GNUstep and the toolkit, which runs without a screen here. Plain C++ for either side.
#pragma once

#ifndef __clang__
#define _Nonnull
#define _Nullable
#endif
#include "CoreGraphics/CoreGraphics.h"

#include <functional>
#include <string>
#include <vector>

namespace stowpocket::standIn {

/// Rows run from the top. A pixel has four bytes: red, green, blue and alpha, not multiplied.
[[nodiscard]] CGImageRef imageOfRGBA(const unsigned char* bytes, int width, int height, int bytesPerRow);
void copyRGBA(CGImageRef image, unsigned char* bytes);
/// Returns null when the file is no picture.
[[nodiscard]] CGImageRef imageOfFile(const char* path);

/// Returns a view that tells how large it becomes, until it is released.
[[nodiscard]] void* makeQtView(std::function<void(int, int)> resized);
void releaseQtView(void* view);

/// What runs whenever the main run loop does.
extern std::function<void()> otherLoop;
/// Asks the toolkit instead when the application is told to terminate, as the toolkit's own delegate does.
void terminateThrough(std::function<void()> quit);
/// The user opens files with the program.
void openFiles(const std::vector<std::string>& paths);
/// The user presses a key in the toolkit's view that has the keyboard.
void pressEscape();
/// Runs the program's own main(), and `user` as soon as its main loop runs. Returns what main() does.
[[nodiscard]] int runProgram(const std::function<void()>& user);

}  // namespace stowpocket::standIn
