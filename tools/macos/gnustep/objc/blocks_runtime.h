// SPDX-License-Identifier: MIT
// GNUstep's headers include this file when blocks are on. It says what the blocks runtime says.
#pragma once

#include <Block.h>
