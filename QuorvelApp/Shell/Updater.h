#pragma once

#include "Desktop/Desktop.h"
#include "Desktop/Scheduler.h"
#include "Shell/UpdateFeed.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <chrono>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;
class QNetworkRequest;

namespace quorvel {

/// Looks for newer versions: asks whether the feed is there, reads it, and tells of what is new. Main thread only; the
/// network is never waited for. What it found is told by signals; `UpdateDialogs` puts it into words.
class Updater : public QObject {
    Q_OBJECT
public:
    /// Who began a check: the command of the menu, or the program by itself.
    enum class Occasion { command, daily };

    static constexpr std::chrono::seconds timeOut{15};      ///< of each of the two requests, as a whole
    static constexpr std::chrono::hours betweenChecks{24};  ///< at least, of those that nobody asked for
    static constexpr std::chrono::seconds afterStart{10};   ///< so that a check takes nothing from the start
    static constexpr int redirectLimit = 5;
    static constexpr auto lastCheckKey = "lastUpdateCheck";  ///< user default: seconds since 1970

    /// Without a feed (an empty address) a check answers like a feed that isn't published, and nothing is ever sent.
    /// `version` is that of this program. Both services outlive the updater.
    Updater(Scheduler& scheduler, Desktop& desktop, QUrl feed, QString version, QObject* parent = nullptr);
    ~Updater() override;

    /// The command of the menu: speaks whatever the outcome. Does nothing while such a check is running. A daily check
    /// that is running gives way to it.
    void checkForUpdates();

    /// From now on looks at most once a day, by the wall clock and over restarts, and speaks only when there is a newer
    /// version. A check that fails counts: the next one is a day later.
    void checkDaily();

    /// Whether a check that the user asked for is running.
    bool checking() const { return running_ && occasion_ == Occasion::command; }
    /// Whether any check is running.
    bool running() const { return running_; }
    const QString& version() const { return version_; }

Q_SIGNALS:
    void upToDate();     ///< also when the feed isn't published; only after a command
    void unreachable();  ///< only after a command
    void newerVersion(const quorvel::UpdateFeed::News& news, quorvel::Updater::Occasion occasion);

private:
    enum class Question { isThere, whatIsNew };
    enum class Outcome { published, notPublished, unreachable };

    void start(Occasion occasion);
    void send(Question question);
    void stop();
    void end(void (Updater::*outcome)());
    void haveAsked();
    void readOn();
    void haveRead();
    void lookWhetherDue();
    QNetworkRequest request() const;
    static Outcome outcomeOf(const QNetworkReply& reply);

    Scheduler& scheduler_;
    Desktop& desktop_;
    const QUrl feed_;
    const QString version_;
    Occasion occasion_ = Occasion::command;
    bool running_ = false;
    QNetworkAccessManager* network_ = nullptr;  // made for the first request
    QNetworkReply* reply_ = nullptr;
    QByteArray body_;
    Scheduler::Task timeOutTask_;
    Scheduler::Task dailyTask_;
};

}  // namespace quorvel
