// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSFiles.h"
#import "NSItemProvider.h"
#import "NSObject.h"
#import "NSProcesses.h"
#import "NSURL.h"
#import "NSValues.h"
