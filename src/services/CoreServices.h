// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

class Clock;
class Dispatch;
class FileManager;
class NotificationCenter;
class PreferenceStore;
struct MainBundle;

/// The services that nearly every room needs. They outlive all closures that the rooms hand out, including those that
/// run in the background.
struct CoreServices {
    PreferenceStore& preferences;
    Dispatch& dispatch;
    const Clock& clock;
    NotificationCenter& notifications;
    FileManager& files;
    const MainBundle& bundle;
};

}  // namespace stowpocket
