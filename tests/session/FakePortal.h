// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// A desktop portal that binds every shortcut it is asked for, unless the test has it answer otherwise.
class FakePortal : public QDBusVirtualObject {
public:
    explicit FakePortal(const QDBusConnection& bus);
    ~FakePortal() override;

    /// What it was asked, in order, with the shortcuts of each set.
    std::vector<std::string> calls;
    QVariant version{2U};
    /// The arguments of the answers to a new session and to its shortcuts; none: as it should be.
    std::optional<QVariantList> created;
    std::optional<QVariantList> bound;
    /// Replaces the whole answer to a set of shortcuts.
    std::function<void()> onBind;

    void activate(const QVariantList& arguments);
    void press(const QString& id, const QString& token = {});
    void closeSession();

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    void introduce(const QDBusMessage& call);
    void open(const QDBusMessage& call, const QVariantMap& options);
    void bind(const QDBusMessage& call, const QVariantMap& options);
    void respond(const QDBusMessage& call, const QVariantMap& options, const QVariantList& arguments);
    void signal(const QString& path, const char* interface, const char* name, const QVariantList& arguments);

    QDBusConnection bus_;
    QString session_;
};

}  // namespace stowpocket
