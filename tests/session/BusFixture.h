// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/AppFixture.h"
#include "platform/linux/session/BusInstance.h"
#include "session/PrivateBus.h"

#include <optional>

namespace stowpocket {

struct LaunchedApp : AppFixture {
    LaunchedApp() { launch(); }
};

/// The application on fakes as the program that runs on a private bus, in this process.
struct BusFixture : LaunchedApp {
    BusFixture() {
        bus.beforeWaiting = [this] { dispatch.runAll(); };
    }
    /// True when this is the one program of the session now.
    bool start() {
        if (instance.claim() != BusInstance::Claim::owned)
            return false;
        instance.serve(commands);
        return true;
    }
    [[nodiscard]] std::vector<std::string> staged() const {
        std::vector<std::string> paths;
        for (const StagedFile& file : commands.list())
            paths.push_back(file.fileURL.path());
        return paths;
    }

    PrivateBus bus;
    std::vector<StartupTokens> tokens;
    ShelfCommands commands{*app, [this](const StartupTokens& used) { tokens.push_back(used); }};
    BusInstance instance{bus.connection(QStringLiteral("instance")), "7.8.9"};
};

}  // namespace stowpocket
