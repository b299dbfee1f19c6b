#include "Shell/SingleInstance.h"

#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QtEndian>
#include <algorithm>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/un.h>
#include <system_error>
#include <utility>

namespace quorvel {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view mark = "QUORVEL1";
constexpr qsizetype headSize = qsizetype(mark.size() + sizeof(quint32));
constexpr std::size_t longestToken = 256;
constexpr std::size_t longestPath = 4096;
constexpr char taken = 'Y';

bool isToken(std::string_view text) {
    return text.size() <= longestToken && std::ranges::all_of(text, [](char c) { return c > ' ' && c < '\x7F'; });
}

bool isPath(std::string_view text) {
    return text.starts_with('/') && text.size() < longestPath;
}

void append(QByteArray& bytes, std::string_view field) {
    bytes.append(field.data(), qsizetype(field.size())).append('\0');
}

/// An address holds this many bytes, of which the toolkit takes some for the name under which a socket comes to be.
constexpr std::size_t longestAddress = sizeof(sockaddr_un::sun_path) - 16;
constexpr const char* socketFile = "instance.socket";

/// Lets go of a socket that may be speaking right now.
void release(std::unique_ptr<QLocalSocket> socket) {
    if (!socket) return;
    socket->disconnect();
    socket.release()->deleteLater();
}

}  // namespace

SingleInstance::SingleInstance(Scheduler& scheduler, fs::path folder, QObject* parent)
    : QObject(parent), scheduler_(scheduler), folder_(std::move(folder)) {}

SingleInstance::~SingleInstance() {
    // While the lock is still held: nobody else's socket is removed.
    connections_.clear();
    server_.reset();
}

void SingleInstance::begin(StartMessage message, Decided decided) {
    decided_ = std::move(decided);
    message_ = encode(message);
    givingUp_ = scheduler_.later(tryingTime, [this] { decide(Outcome::alone); });
    tryOnce();
}

void SingleInstance::decide(Outcome outcome) {
    nextTry_.cancel();
    release(std::move(socket_));
    message_.clear();
    const Decided decided = std::exchange(decided_, {});
    givingUp_.cancel();
    if (decided) decided(outcome);
}

void SingleInstance::tryOnce() {
    switch (takeLock()) {
        case Lock::taken:
            return decide(listen() ? Outcome::first : Outcome::alone);
        case Lock::impossible:
            return decide(Outcome::alone);
        case Lock::heldByAnother:
            break;
    }
    socket_ = std::make_unique<QLocalSocket>();
    QLocalSocket* socket = socket_.get();
    // It is refused while the other is about to listen, or about to end.
    connect(socket, &QLocalSocket::errorOccurred, this, [this] { tryAgain(); });
    connect(socket, &QLocalSocket::connected, this, [this, socket] { socket->write(message_); });
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
        char answer = 0;
        if (socket->getChar(&answer) && answer == taken)
            decide(Outcome::handedOver);
        else
            tryAgain();
    });
    socket->connectToServer(socketName());
}

void SingleInstance::tryAgain() {
    release(std::move(socket_));
    nextTry_ = scheduler_.later(betweenTries, [this] { tryOnce(); });
}

QString SingleInstance::socketName() const {
    fs::path name = folder_ / socketFile;
    // A longer one is reached by way of the open folder, which makes no difference to who may.
    if (name.native().size() > longestAddress)
        name = fs::path("/proc/self/fd") / std::to_string(handle_.get()) / socketFile;
    return QFile::decodeName(name.c_str());
}

SingleInstance::Lock SingleInstance::takeLock() {
    std::error_code ignored;
    fs::create_directories(folder_, ignored);
    if (!handle_) handle_ = FileDescriptor(::open(folder_.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    FileDescriptor file(::open((folder_ / "instance.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file) return Lock::impossible;
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? Lock::heldByAnother : Lock::impossible;
    lock_ = std::move(file);
    return Lock::taken;
}

bool SingleInstance::listen() {
    // With the lock in hand, a socket that is there belongs to nobody any more.
    QLocalServer::removeServer(socketName());
    server_ = std::make_unique<QLocalServer>();
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    connect(server_.get(), &QLocalServer::newConnection, this, &SingleInstance::accept);
    return server_->listen(socketName());
}

void SingleInstance::accept() {
    while (QLocalSocket* connection = server_->nextPendingConnection()) {
        connect(connection, &QLocalSocket::disconnected, connection, &QObject::deleteLater);
        if (connections_.size() >= connectionLimit) {
            connection->abort();
            continue;
        }
        connections_.emplace(connection, scheduler_.later(connectionTime, [connection] { connection->abort(); }));
        connection->setReadBufferSize(qint64(messageLimit) + headSize + 1);
        connect(connection, &QLocalSocket::disconnected, this, [this, connection] { connections_.erase(connection); });
        connect(connection, &QLocalSocket::readyRead, this, [this, connection] { read(connection); });
        read(connection);
    }
}

void SingleInstance::read(QLocalSocket* connection) {
    if (!connections_.contains(connection)) return;
    const Read read = decode(connection->peek(qint64(messageLimit) + headSize + 1));
    if (read.reading == Reading::incomplete) return;
    connection->disconnect(this);
    connections_.erase(connection);
    if (read.reading == Reading::invalid) return connection->abort();
    connection->readAll();
    connection->putChar(taken);
    connection->flush();
    connection->disconnectFromServer();
    Q_EMIT started(read.message);
}

QByteArray SingleInstance::encode(const StartMessage& message) {
    QByteArray fields;
    append(fields, isToken(message.activationToken) ? message.activationToken : "");
    for (const fs::path& file : message.files) {
        const std::string& path = file.native();
        if (!isPath(path) || fields.size() + qsizetype(path.size()) >= qsizetype(messageLimit)) continue;
        append(fields, path);
    }
    QByteArray bytes(mark.data(), qsizetype(mark.size()));
    const quint32 size = qToBigEndian(quint32(fields.size()));
    bytes.append(reinterpret_cast<const char*>(&size), sizeof size);
    return bytes + fields;
}

SingleInstance::Read SingleInstance::decode(const QByteArray& bytes) {
    const std::string_view all(bytes.data(), std::size_t(bytes.size()));
    if (!mark.starts_with(all.substr(0, mark.size()))) return {Reading::invalid, {}};
    if (bytes.size() < headSize) return {};
    const std::size_t size = qFromBigEndian<quint32>(bytes.data() + mark.size());
    std::string_view fields = all.substr(std::size_t(headSize));
    if (size > messageLimit || fields.size() > size) return {Reading::invalid, {}};
    if (fields.size() < size) return {};
    if (!fields.ends_with('\0')) return {Reading::invalid, {}};

    const auto next = [&] {
        const std::string_view field = fields.substr(0, fields.find('\0'));
        fields.remove_prefix(field.size() + 1);
        return field;
    };
    Read read{Reading::complete, {}};
    const std::string_view token = next();
    if (!isToken(token)) return {Reading::invalid, {}};
    read.message.activationToken = token;
    while (!fields.empty()) {
        const std::string_view path = next();
        if (!isPath(path)) return {Reading::invalid, {}};
        read.message.files.emplace_back(path);
    }
    return read;
}

}  // namespace quorvel
