// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QTcpServer>
#include <QTcpSocket>

#include <string>
#include <vector>

namespace stowpocket {

/// What the server does once it has sent an answer.
enum class Afterwards { close, wait, repeat };

/// A web server on the loopback device whose answers are given byte by byte.
class LocalServer {
public:
    LocalServer() {
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            QTcpSocket* const socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(*socket); });
        });
        server_.listen(QHostAddress::LocalHost);
    }

    [[nodiscard]] std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(server_.serverPort()) + path;
    }
    void serve(const char* path, const std::string& bytes, Afterwards afterwards = Afterwards::close) {
        answers_[path] = {QByteArray::fromStdString(bytes), afterwards};
    }
    /// An answer that is as it should be.
    void serveBody(const char* path, const std::string& body) {
        serve(path, "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    }

    std::vector<QByteArray> asked;

private:
    struct Answer {
        QByteArray bytes;
        Afterwards afterwards = Afterwards::close;
    };

    void answer(QTcpSocket& socket) {
        const QByteArray path = socket.readAll().split(' ').value(1);
        asked.push_back(path);
        const Answer given = answers_.value(path, {"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n", {}});
        socket.write(given.bytes);
        if (given.afterwards == Afterwards::close)
            socket.disconnectFromHost();
        if (given.afterwards == Afterwards::repeat)
            QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [&socket, bytes = given.bytes] {
                if (socket.bytesToWrite() == 0)
                    socket.write(bytes);
            });
    }

    QTcpServer server_;
    QHash<QByteArray, Answer> answers_;
};

}  // namespace stowpocket
