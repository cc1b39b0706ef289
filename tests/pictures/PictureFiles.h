// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/linux/pictures/RegularFile.h"
#include "x11/ComesTrue.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

namespace stowpocket {

/// A folder of the test's own, and the thumbnail cache of the test's own.
class PictureFiles {
public:
    [[nodiscard]] std::string path(const std::string& name) const {
        return folder_.path().toStdString() + "/" + name;
    }
    [[nodiscard]] FileURL url(const std::string& name) const { return *FileURL::fromPath(path(name)); }
    FileURL write(const std::string& name, const QByteArray& content) const {
        QFile file(QFile::decodeName(path(name).c_str()));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return url(name);
    }
    [[nodiscard]] QByteArray read(const std::string& name) const {
        QFile file(QFile::decodeName(path(name).c_str()));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    FileURL draw(const std::string& name, const QSize& size, Qt::GlobalColor color = Qt::red) const {
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(QFile::decodeName(path(name).c_str())));
        return url(name);
    }

    /// Puts a thumbnail into the cache as another program would.
    static void cache(const std::string& uri, const std::string& modified, const QSize& size = {100, 50},
                      const QString& sizeName = QStringLiteral("normal")) {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(Qt::blue);
        image.setText(QStringLiteral("Thumb::URI"), QString::fromStdString(uri));
        image.setText(QStringLiteral("Thumb::MTime"), QString::fromStdString(modified));
        const QDir folder(qEnvironmentVariable("XDG_CACHE_HOME") + QStringLiteral("/thumbnails/") + sizeName);
        EXPECT_TRUE(folder.mkpath(QStringLiteral(".")));
        const QByteArray key = QCryptographicHash::hash(QByteArray::fromStdString(uri), QCryptographicHash::Md5);
        EXPECT_TRUE(image.save(folder.filePath(QString::fromLatin1(key.toHex()) + QStringLiteral(".png"))));
    }
    static std::int64_t modifiedSeconds(const FileURL& url) {
        return RegularFile::stateAt(url.path())->modifiedSeconds;
    }

private:
    QTemporaryDir folder_;
};

}  // namespace stowpocket
