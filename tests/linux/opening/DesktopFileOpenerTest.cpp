// SPDX-License-Identifier: MIT
#include "platform/linux/opening/DesktopFileOpener.h"
#include "support/ComesTrue.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

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

TEST(DesktopFileOpenerTest, opensThePageOfALinkAndStartsNoProgram) {
    const TemporaryFolder folder;
    folder.write("page.desktop",
                 "[Desktop Entry]\nType=Link\nURL=https://example.com/a%20b\n[Other]\nURL=file:///x\n");
    folder.write("file.desktop", "[Desktop Entry]\nType=Link\nURL=file:///etc/passwd\n");
    folder.write("program.desktop", "[Desktop Entry]\nType=Application\nURL=https://example.com\nExec=true\n");
    QStringList launched;
    DesktopFileOpener opener(QDBusConnection(QStringLiteral("none")),
                             [&](const QStringList& urls, const FileOpener::Completion&) { launched = urls; });
    const std::vector<FileURL> files{folder.url("page.desktop"), folder.url("file.desktop"),
                                     folder.url("program.desktop"), folder.url("gone.desktop")};
    opener.open(files, [](bool) {});
    QStringList wanted{QStringLiteral("https://example.com/a%20b")};
    for (const char* const name : {"file.desktop", "program.desktop", "gone.desktop"})
        wanted.append(QString::fromStdString(folder.url(name).string()));
    EXPECT_EQ(launched, wanted);
}

}  // namespace
}  // namespace stowpocket
