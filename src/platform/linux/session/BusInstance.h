// SPDX-License-Identifier: MIT
#pragma once

#include "cli/ShelfCommands.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTimer>

#include <functional>
#include <string>
#include <vector>

namespace stowpocket {

/// Makes this process the one program of the session: owns its name on the bus and answers the command verbs of
/// other processes there. Only the same user is answered. A bus that ends and comes back is joined again. Main
/// thread, on which it waits for the bus alone, when it asks for the name.
class BusInstance : public QDBusVirtualObject {
public:
    enum class Claim { owned, takenByAnother, noBus };

    /// A new connection of that name to the bus, which may be down.
    using Connect = std::function<QDBusConnection(const QString& name)>;

    /// `connectAgain` is used once `bus` has ended.
    BusInstance(QDBusConnection bus, std::string version, Connect connectAgain = connectToSessionBus);
    ~BusInstance() override;

    /// Asks for the name, without waiting in line. With `noBus` the program runs alone and cannot be asked anything.
    [[nodiscard]] Claim claim();
    /// From here on requests are carried out, first those that have come since the claim. `commands` outlives this.
    void serve(ShelfCommands& commands);

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    static QDBusConnection connectToSessionBus(const QString& name);
    void joinAgain();

    struct Method;
    static const std::vector<Method>& methods();

    void askForUser(const QDBusMessage& request);
    void carryOut(const QDBusMessage& request);
    void answer(const QDBusMessage& request, const QVariantList& values);
    /// Answers with the outcomes and with the reason why they are not saved yet, empty when they are.
    template <class Outcome>
    [[nodiscard]] ShelfCommands::Completion<Outcome> answerTo(const QDBusMessage& request);
    void refuse(const QDBusMessage& request, QDBusError::ErrorType error, const QString& reason);
    void perform(ShelfAction action, const QDBusMessage& request);

    void add(const QDBusMessage& request);
    void list(const QDBusMessage& request);
    void remove(const QDBusMessage& request);

    QDBusConnection bus_;
    const std::string version_;
    const Connect connect_;
    /// Runs while the bus is down.
    QTimer joining_;
    ShelfCommands* commands_ = nullptr;
    std::vector<QDBusMessage> waiting_;
};

}  // namespace stowpocket
