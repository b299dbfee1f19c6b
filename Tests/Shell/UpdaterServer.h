#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>
#include <functional>
#include <vector>

namespace quorvel {

/// A server on this computer that answers as it is told, right or wrong.
class UpdaterServer {
public:
    struct Request {
        QByteArray method;
        QByteArray path;
        QByteArray head;  ///< all lines
    };

    /// What goes over the line, and what happens to it then.
    struct Answer {
        enum class Then { close, hang, repeatForEver };
        QByteArray bytes;
        Then then = Then::close;
    };

    std::function<Answer(const Request&)> answer = [](const Request&) { return Answer{}; };
    std::vector<Request> requests;

    UpdaterServer() {
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            while (QTcpSocket* socket = server_.nextPendingConnection()) serve(socket);
        });
        server_.listen(QHostAddress::LocalHost);
    }

    QUrl address(const QByteArray& path = "/feed.json") const {
        return QUrl(QString("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(QString(path)));
    }

    /// Refuses whoever comes from now on.
    void close() { server_.close(); }

    static Answer status(int code, const QByteArray& lines = "", const QByteArray& body = "") {
        return {"HTTP/1.1 " + QByteArray::number(code) + " Words\r\nContent-Length: " +
                QByteArray::number(body.size()) + "\r\nConnection: close\r\n" + lines + "\r\n" + body};
    }

private:
    void serve(QTcpSocket* socket) {
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, head = QByteArray()]() mutable {
            head += socket->readAll();
            if (!head.contains("\r\n\r\n")) return;
            const QList<QByteArray> words = head.left(head.indexOf('\r')).split(' ');
            requests.push_back({words.value(0), words.value(1), head});
            head.clear();
            const Answer given = answer(requests.back());
            socket->write(given.bytes);
            if (given.then == Answer::Then::close) socket->disconnectFromHost();
            if (given.then == Answer::Then::repeatForEver)
                QObject::connect(socket, &QTcpSocket::bytesWritten, socket, [socket] {
                    if (socket->bytesToWrite() == 0) socket->write(QByteArray(1 << 16, 'x'));
                });
        });
    }

    QTcpServer server_;
};

}  // namespace quorvel
