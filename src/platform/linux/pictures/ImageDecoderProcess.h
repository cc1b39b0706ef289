// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// The first argument of a process that is started to decode one picture.
constexpr const char* decodeImageOption = "--decode-image";

/// Whether this process was started by an `ImageDecoder`. main() asks before anything else.
[[nodiscard]] bool isImageDecoderProcess(int argc, char** argv);

/// Gives up all rights that decoding does not need, decodes the picture on standard input, writes the reply to
/// standard output and answers the exit code. Needs no application object and no display.
int runImageDecoder(int argc, char** argv);

}  // namespace stowpocket
