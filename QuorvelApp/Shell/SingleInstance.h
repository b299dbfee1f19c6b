#pragma once

#include "Desktop/Scheduler.h"
#include "Foundation/FileDescriptor.h"

#include <QByteArray>
#include <QObject>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QLocalServer;
class QLocalSocket;

namespace quorvel {

/// What a later start tells the program that runs already.
struct StartMessage {
    std::vector<std::filesystem::path> files;  ///< absolute, any bytes
    std::string activationToken;               ///< the right to bring a window forward, where the system hands out one

    bool operator==(const StartMessage&) const = default;
};

/// Sees to it that a library is open in one process only. Who holds the lock in the library's folder is the first; the
/// system takes the lock back when the process ends, however it ends. The others hand it what they were started with,
/// through a socket in that folder, so that neither another user nor another library is ever met. Main thread only;
/// nothing is waited for.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    enum class Outcome {
        first,       ///< go on and start; `started` tells of every later start
        handedOver,  ///< the running program has the message: end
        alone,       ///< neither could be settled: start, but later starts will not come here
    };
    using Decided = std::function<void(Outcome)>;

    static constexpr std::size_t messageLimit = 1 << 20;      ///< in bytes; files beyond it aren't handed over
    static constexpr std::size_t connectionLimit = 16;        ///< at the same time; more are closed at once
    static constexpr std::chrono::seconds connectionTime{2};  ///< for a message to arrive, and for its answer
    static constexpr std::chrono::milliseconds betweenTries{50};
    static constexpr std::chrono::seconds tryingTime{5};  ///< until a running program counts as deaf

    /// The scheduler outlives it. The folder is made when it isn't there.
    SingleInstance(Scheduler& scheduler, std::filesystem::path folder, QObject* parent = nullptr);
    /// Makes room for another start.
    ~SingleInstance() override;

    /// Settles what this process is; to be called once. `decided` may run before this returns.
    void begin(StartMessage message, Decided decided);

    /// The bytes of a message: a mark, the number of bytes that follow, the token and each path, each ended by a zero.
    static QByteArray encode(const StartMessage& message);

    enum class Reading { incomplete, invalid, complete };
    struct Read {
        Reading reading = Reading::incomplete;
        StartMessage message;
    };
    /// What the bytes that have come so far are.
    static Read decode(const QByteArray& bytes);

Q_SIGNALS:
    /// There was another start: the window comes forward and opens the files, if any.
    void started(const quorvel::StartMessage& message);

private:
    enum class Lock { taken, heldByAnother, impossible };

    Lock takeLock();
    QString socketName() const;
    bool listen();
    void accept();
    void read(QLocalSocket* connection);
    void tryOnce();
    void tryAgain();
    void decide(Outcome outcome);

    Scheduler& scheduler_;
    const std::filesystem::path folder_;
    FileDescriptor handle_;  // of the folder
    FileDescriptor lock_;
    std::unique_ptr<QLocalServer> server_;
    std::map<QLocalSocket*, Scheduler::Task> connections_;
    // of a later start
    QByteArray message_;
    Decided decided_;
    std::unique_ptr<QLocalSocket> socket_;
    Scheduler::Task nextTry_;
    Scheduler::Task givingUp_;
};

}  // namespace quorvel
