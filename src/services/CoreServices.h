// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

class Clock;
class Dispatch;
class FileManager;
class NotificationCenter;
class PreferenceStore;
struct MainBundle;

/// What nearly every room is built on. All of it outlives the closures that the rooms hand out, those that run in the
/// background included.
struct CoreServices {
    PreferenceStore& preferences;
    Dispatch& dispatch;
    const Clock& clock;
    NotificationCenter& notifications;
    FileManager& files;
    const MainBundle& bundle;
};

}  // namespace stowpocket
