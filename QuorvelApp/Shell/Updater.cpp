#include "Shell/Updater.h"

#include "Foundation/Text.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSysInfo>
#include <chrono>
#include <string>
#include <utility>

namespace quorvel {

namespace {

constexpr std::chrono::hours betweenLooks{1};

std::chrono::seconds secondsSince1970(Scheduler::Clock::time_point time) {
    return std::chrono::floor<std::chrono::seconds>(time.time_since_epoch());
}

bool mayRedirect(const QUrl& from, const QUrl& to) {
    return UpdateFeed::mayRedirect(from.scheme().toStdString(), to.scheme().toStdString());
}

/// Whether the exchange itself failed. What the server refused by its status counts as an answer.
bool isTransportError(QNetworkReply::NetworkError error) {
    const bool refused = (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
                         error >= QNetworkReply::InternalServerError;
    return error != QNetworkReply::NoError && !refused;
}

}  // namespace

Updater::Updater(Scheduler& scheduler, Desktop& desktop, QUrl feed, QString version, QObject* parent)
    : QObject(parent), scheduler_(scheduler), desktop_(desktop), feed_(std::move(feed)), version_(std::move(version)) {}

Updater::~Updater() {
    stop();
}

void Updater::checkForUpdates() {
    if (checking()) return;
    if (feed_.isEmpty()) {
        Q_EMIT upToDate();
        return;
    }
    stop();
    start(Occasion::command);
}

void Updater::checkDaily() {
    if (feed_.isEmpty()) return;
    dailyTask_ = scheduler_.later(afterStart, [this] { lookWhetherDue(); });
}

void Updater::lookWhetherDue() {
    // Not the time until the day is over: a computer that slept through it would look later and later.
    dailyTask_ = scheduler_.later(betweenLooks, [this] { lookWhetherDue(); });
    if (running_) return;
    const std::chrono::seconds now = secondsSince1970(scheduler_.now());
    const auto last = Text::parseInteger(desktop_.userDefault(lastCheckKey).value_or(""));
    // A time that is yet to come was written by a clock that has been put right since.
    if (last && *last <= now.count() && *last > (now - betweenChecks).count()) return;
    start(Occasion::daily);
}

void Updater::start(Occasion occasion) {
    running_ = true;
    occasion_ = occasion;
    desktop_.setUserDefault(lastCheckKey, std::to_string(secondsSince1970(scheduler_.now()).count()));
    send(Question::isThere);
}

QNetworkRequest Updater::request() const {
    QNetworkRequest request(feed_);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setMaximumRedirectsAllowed(redirectLimit);
    request.setRawHeader("User-Agent", QByteArray(appName.data(), qsizetype(appName.size())) + '/' + version_.toUtf8());
    request.setRawHeader("Cache-Control", "no-cache");  // for those that keep copies on the way
    // Nothing is unpacked, so that the limit of the size holds for what comes over the line, too.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

void Updater::send(Question question) {
    if (!mayRedirect(feed_, feed_)) return end(&Updater::unreachable);
    if (!network_) network_ = new QNetworkAccessManager(this);
    network_->clearConnectionCache();  // whatever a server has said too much isn't the beginning of the next answer
    body_.clear();
    timeOutTask_ = scheduler_.later(timeOut, [this] { end(&Updater::unreachable); });
    const bool whatIsNew = question == Question::whatIsNew;
    reply_ = whatIsNew ? network_->get(request()) : network_->head(request());
    reply_->setReadBufferSize(qint64(UpdateFeed::sizeLimit) + 1);
    connect(reply_, &QNetworkReply::redirected, this, [this](const QUrl& target) {
        if (mayRedirect(reply_->url(), target))
            Q_EMIT reply_->redirectAllowed();
        else
            end(&Updater::unreachable);
    });
    if (whatIsNew) connect(reply_, &QNetworkReply::readyRead, this, &Updater::readOn);
    connect(reply_, &QNetworkReply::finished, this, whatIsNew ? &Updater::haveRead : &Updater::haveAsked);
}

void Updater::stop() {
    running_ = false;
    timeOutTask_.cancel();
    if (QNetworkReply* reply = std::exchange(reply_, nullptr)) {
        reply->disconnect(this);
        if (reply->isRunning()) reply->abort();
        reply->deleteLater();
    }
}

void Updater::end(void (Updater::*outcome)()) {
    const bool asked = checking();
    stop();
    if (asked) (this->*outcome)();
}

void Updater::haveAsked() {
    switch (outcomeOf(*reply_)) {
        case Outcome::unreachable:
            return end(&Updater::unreachable);
        case Outcome::notPublished:
            return end(&Updater::upToDate);
        case Outcome::published:
            break;
    }
    stop();
    running_ = true;
    send(Question::whatIsNew);
}

void Updater::readOn() {
    const qint64 room = qint64(UpdateFeed::sizeLimit) + 1 - body_.size();
    body_ += reply_->read(room);
    if (body_.size() > qsizetype(UpdateFeed::sizeLimit)) end(&Updater::unreachable);
}

void Updater::haveRead() {
    const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (const Outcome outcome = outcomeOf(*reply_); outcome == Outcome::notPublished) return end(&Updater::upToDate);
    // Without a body there is nothing that could be newer.
    if (reply_->error() == QNetworkReply::NoError && status == 204) return end(&Updater::upToDate);
    readOn();
    if (!reply_) return;
    if (reply_->error() != QNetworkReply::NoError) return end(&Updater::unreachable);

    const auto releases = UpdateFeed::parse({body_.data(), std::size_t(body_.size())});
    // A page that isn't the feed comes from something that stands between: as good as no connection.
    if (!releases) return end(&Updater::unreachable);
    const auto news = UpdateFeed::news(*releases, version_.toStdString(),
                                       {QSysInfo::kernelType().toStdString(), QSysInfo::kernelVersion().toStdString()});
    if (!news) return end(&Updater::upToDate);
    stop();
    Q_EMIT newerVersion(*news, occasion_);
}

Updater::Outcome Updater::outcomeOf(const QNetworkReply& reply) {
    if (isTransportError(reply.error())) return Outcome::unreachable;
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if ((status >= 200 && status <= 299) || status == 405 || status == 501) return Outcome::published;
    if (status == 404 || status == 410) return Outcome::notPublished;
    return Outcome::unreachable;
}

}  // namespace quorvel
