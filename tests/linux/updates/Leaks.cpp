// SPDX-License-Identifier: MIT
// Transfers that are broken off leave something of Qt's network thread behind, now and then. The names are those that
// the sanitizers look for; without them nobody calls these.
extern "C" {
const char* __asan_default_options() {  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    return "fast_unwind_on_malloc=0";
}
const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    return "leak:libQt6Network.so\n";
}
}
