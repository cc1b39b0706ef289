// SPDX-License-Identifier: MIT
#include "platform/linux/opening/DesktopFileOpener.h"
#include "support/ComesTrue.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusVirtualObject>

namespace stowpocket {
namespace {

/// A file manager that shows files, or never answers.
class FakeFileManager : public QDBusVirtualObject {
public:
    explicit FakeFileManager(QDBusConnection bus) {
        EXPECT_TRUE(bus.registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), this));
        EXPECT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.FileManager1")));
    }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        shown = message.arguments().value(0).toStringList();
        if (hangs)
            message.setDelayedReply(true);
        else
            connection.send(message.createReply());
        return true;
    }
    bool hangs = false;
    QStringList shown;
};

TEST(DesktopFileOpenerTest, opensTheFoldersIfNoFileManagerShowsTheFiles) {
    PrivateBus bus;
    QStringList launched;
    DesktopFileOpener opener(
        bus.connection(QStringLiteral("shelf")),
        [&](const QStringList& urls, const FileOpener::Completion&) { launched = urls; },
        std::chrono::milliseconds(100));
    const std::vector<FileURL> files{*FileURL::fromPath("/a/one file"), *FileURL::fromPath("/a/two"),
                                     *FileURL::fromPath("/b/three")};
    const QStringList folders{QStringLiteral("file:///a"), QStringLiteral("file:///b")};
    opener.showInFolder(files);
    EXPECT_TRUE(comesTrue([&] { return launched == folders; })) << "nobody is there";

    FakeFileManager fileManager(bus.connection(QStringLiteral("file manager")));
    launched.clear();
    opener.showInFolder(files);
    EXPECT_TRUE(comesTrue([&] { return fileManager.shown.value(0) == QLatin1String("file:///a/one%20file"); }));
    fileManager.hangs = true;
    opener.showInFolder(files);
    EXPECT_TRUE(comesTrue([&] { return launched == folders; })) << "it hangs";
}

}  // namespace
}  // namespace stowpocket
