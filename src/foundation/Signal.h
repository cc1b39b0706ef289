// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace stowpocket {

namespace detail {

struct SignalConnection {
    bool connected = true;
};

struct SignalState {
    virtual ~SignalState() = default;
    virtual void removeDisconnected() = 0;
};

}  // namespace detail

/// Keeps a slot connected: it is called until this is destroyed or reset. Outliving the signal is harmless.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    Subscription(std::weak_ptr<detail::SignalState> signal, std::weak_ptr<detail::SignalConnection> connection)
        : signal_(std::move(signal)), connection_(std::move(connection)) {}
    Subscription(Subscription&&) noexcept = default;
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            reset();
            signal_ = std::move(other.signal_);
            connection_ = std::move(other.connection_);
        }
        return *this;
    }
    ~Subscription() { reset(); }

    void reset() {
        if (const auto connection = std::exchange(connection_, {}).lock())
            connection->connected = false;
        if (const auto signal = std::exchange(signal_, {}).lock())
            signal->removeDisconnected();
    }

private:
    std::weak_ptr<detail::SignalState> signal_;
    std::weak_ptr<detail::SignalConnection> connection_;
};

/// Tells any number of slots that something happened, in the order in which they connected, on the emitting thread.
/// A slot may connect, disconnect, emit again or destroy the signal; one connected during an emit waits for the next.
template <class... Arguments>
class Signal {
public:
    using Slot = std::function<void(Arguments...)>;

    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;
    ~Signal() {
        for (const auto& connection : state_->connections)
            connection->connected = false;
    }

    Subscription connect(Slot slot) {
        auto connection = std::make_shared<Connection>();
        connection->slot = std::move(slot);
        state_->connections.push_back(connection);
        return Subscription(state_, connection);
    }

    void emit(Arguments... arguments) const {
        const Emission emission(state_);
        const std::size_t count = state_->connections.size();
        State& state = *emission.state;
        for (std::size_t at = 0; at < count; ++at) {
            const std::shared_ptr<Connection> connection = state.connections[at];
            if (connection->connected)
                connection->slot(arguments...);
        }
    }

private:
    struct Connection : detail::SignalConnection {
        Slot slot;
    };

    struct State : detail::SignalState {
        void removeDisconnected() override {
            if (emitting > 0)
                return;
            // The closures are destroyed only once the list is consistent again: one may own a subscription to this
            // very signal.
            const auto firstDead = std::stable_partition(
                connections.begin(), connections.end(), [](const auto& connection) { return connection->connected; });
            const std::vector<std::shared_ptr<Connection>> dead(firstDead, connections.end());
            connections.erase(firstDead, connections.end());
        }

        std::vector<std::shared_ptr<Connection>> connections;
        int emitting = 0;
    };

    /// Keeps the slots in place, and the state alive, however the emit ends.
    struct Emission {
        explicit Emission(std::shared_ptr<State> emitted) : state(std::move(emitted)) { ++state->emitting; }
        Emission(const Emission&) = delete;
        Emission& operator=(const Emission&) = delete;
        ~Emission() {
            --state->emitting;
            state->removeDisconnected();
        }
        std::shared_ptr<State> state;
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
};

/// Carries named announcements from parts that do not know who listens. Main thread only. Observers run at once, in
/// the order in which they were added. Each name is a constant in the header of the class that posts it.
class NotificationCenter {
public:
    void post(std::string_view name) {
        const auto signal = signals_.find(name);
        if (signal != signals_.end())
            signal->second.emit();
    }
    /// `observer` runs at every post of `name` for as long as the subscription lives.
    Subscription observe(std::string_view name, std::function<void()> observer) {
        return signals_[std::string(name)].connect(std::move(observer));
    }

private:
    std::map<std::string, Signal<>, std::less<>> signals_;
};

}  // namespace stowpocket
