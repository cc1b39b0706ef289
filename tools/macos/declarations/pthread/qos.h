// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

typedef enum : unsigned int { QOS_CLASS_UTILITY = 0x11, QOS_CLASS_BACKGROUND = 0x09 } qos_class_t;
extern "C" int pthread_set_qos_class_self_np(qos_class_t quality, int relativePriority);
