// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/pictures/RegularFile.h"
#include "support/ComesTrue.h"
#include "support/TemporaryFolder.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QImage>

#include <gtest/gtest.h>

namespace stowpocket {

/// A folder of the test's own, and the thumbnail cache of the test's own.
class PictureFiles : public TemporaryFolder {
public:
    FileURL write(const std::string& name, const QByteArray& content) const {
        TemporaryFolder::write(name, content.toStdString());
        return url(name);
    }
    [[nodiscard]] QByteArray read(const std::string& name) const {
        return QByteArray::fromStdString(TemporaryFolder::read(name));
    }
    FileURL draw(const std::string& name, const QSize& size, Qt::GlobalColor color = Qt::red) const {
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        TemporaryFolder::write(name);  // makes its folder
        EXPECT_TRUE(image.save(QString::fromStdString(path(name))));
        return url(name);
    }
    /// A program: `commands` for the shell.
    [[nodiscard]] std::string script(const std::string& commands) const {
        TemporaryFolder::write("script", "#!/bin/sh\n" + commands + "\n");
        std::filesystem::permissions(path("script"), std::filesystem::perms::owner_all);
        return path("script");
    }

    static QImage thumbnail(const std::string& uri, const std::string& modified, const QSize& size) {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(Qt::blue);
        image.setText(QStringLiteral("Thumb::URI"), QString::fromStdString(uri));
        image.setText(QStringLiteral("Thumb::MTime"), QString::fromStdString(modified));
        return image;
    }
    /// Puts a thumbnail into the cache as another program would.
    static void cache(const std::string& uri, const std::string& modified, const QSize& size = {100, 50},
                      const QString& sizeName = QStringLiteral("normal")) {
        const QString file = cachePath(uri, sizeName);
        EXPECT_TRUE(QDir().mkpath(QFileInfo(file).path()) && thumbnail(uri, modified, size).save(file));
    }
    static QString cachePath(const std::string& uri, const QString& sizeName = QStringLiteral("normal")) {
        const QByteArray key = QCryptographicHash::hash(QByteArray::fromStdString(uri), QCryptographicHash::Md5);
        return QStringLiteral("%1/thumbnails/%2/%3.png")
            .arg(qEnvironmentVariable("XDG_CACHE_HOME"), sizeName, QString::fromLatin1(key.toHex()));
    }
    static std::int64_t modifiedSeconds(const FileURL& url) {
        return RegularFile::stateAt(url.path())->modifiedSeconds;
    }
};

}  // namespace stowpocket
