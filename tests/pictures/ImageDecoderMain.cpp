// SPDX-License-Identifier: MIT
// The decoder as the program runs it, without the rest of the program.
#include "platform/linux/pictures/ImageDecoderProcess.h"

int main(int argc, char** argv) {
    return stowpocket::runImageDecoder(argc, argv);
}
