// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/updates/UpdaterProcess.h"
#include "services/UpdateFramework.h"

#include <list>
#include <string>

namespace stowpocket {

/// Documents fetched by `stowpocket-updater`. Completions run on the main thread, and no more once this is gone.
class UpdaterFeedSession : public FeedSession {
public:
    explicit UpdaterFeedSession(std::string program) : program_(std::move(program)) {}
    [[nodiscard]] bool isValid(const std::string& url) const override;
    void dataTask(const std::string& url, Completion completion) override;

private:
    const std::string program_;
    std::list<std::unique_ptr<UpdaterProcess>> tasks_;
};

}  // namespace stowpocket
