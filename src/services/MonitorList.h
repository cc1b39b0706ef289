// SPDX-License-Identifier: MIT
#pragma once

#include "services/Input.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace stowpocket {

/// The monitors of one kind. A handler may add and remove monitors, itself included, and own its token; tokens may
/// outlive the list. `changed` runs after the first monitor came and after the last one went.
template <class Handler>
class MonitorList {
public:
    explicit MonitorList(std::function<void()> changed = [] {}) : changed_(std::move(changed)) {}

    MonitorList(const MonitorList&) = delete;
    MonitorList& operator=(const MonitorList&) = delete;
    ~MonitorList() {
        // What a handler owns may include its own token: neither would ever go.
        const Monitors last = *monitors_;
        for (const std::shared_ptr<Monitor>& monitor : last)
            monitor->handler = nullptr;
    }

    [[nodiscard]] bool isEmpty() const { return monitors_->empty(); }

    [[nodiscard]] std::unique_ptr<EventMonitorToken> add(Handler handler) {
        monitors_->push_back(std::make_shared<Monitor>(std::move(handler)));
        if (monitors_->size() == 1)
            changed_();
        return std::make_unique<Token>(*this, monitors_->back());
    }

    /// Gives `call` one handler after the other, the last one added first, until it answers true; says whether it
    /// did.
    template <class Call>
    [[nodiscard]] bool anyOf(Call call) const {
        const Monitors present(monitors_->rbegin(), monitors_->rend());
        return std::ranges::any_of(present, [&call](const std::shared_ptr<Monitor>& monitor) {
            return monitor->installed && call(monitor->handler);
        });
    }

private:
    struct Monitor {
        explicit Monitor(Handler newHandler) : handler(std::move(newHandler)) {}
        Handler handler;
        bool installed = true;
    };
    using Monitors = std::vector<std::shared_ptr<Monitor>>;

    class Token : public EventMonitorToken {
    public:
        Token(MonitorList& list, std::shared_ptr<Monitor> monitor)
            : list_(list), monitors_(list.monitors_), monitor_(std::move(monitor)) {}
        Token(const Token&) = delete;
        Token& operator=(const Token&) = delete;
        ~Token() override {
            monitor_->installed = false;
            const auto monitors = monitors_.lock();
            if (!monitors)
                return;
            std::erase(*monitors, monitor_);
            if (monitors->empty())
                list_.changed_();
        }

    private:
        MonitorList& list_;  ///< there as long as `monitors_` is
        const std::weak_ptr<Monitors> monitors_;
        const std::shared_ptr<Monitor> monitor_;
    };

    const std::function<void()> changed_;
    const std::shared_ptr<Monitors> monitors_ = std::make_shared<Monitors>();
};

}  // namespace stowpocket
