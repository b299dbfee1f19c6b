#include "Watch.h"

#include "Interruption.h"
#include "Library/FileStamp.h"
#include "Library/FileWatcher.h"
#include "QtPlatform/QtScheduler.h"
#include "StandardOutput.h"
#include "Wording.h"

#include <QCoreApplication>
#include <chrono>
#include <ctime>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <unistd.h>
#include <utility>

namespace quorvel::CommandLine {
namespace {

/// How often a spreadsheet that isn't there, or can't be watched, is looked for.
constexpr std::chrono::seconds lookingPause{1};

/// "14:32:05 Saved 2 pages to “cards.pdf”.⏎"
std::string withTime(const std::string& sentence) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[16];
    return std::string(text, std::strftime(text, sizeof text, "%H:%M:%S", &local)) + " " + sentence + "\n";
}

class Watch {
public:
    Watch(const Options& options, Export make) : options_(options), make_(make) {}

    Result run() {
        const Result first = exportNow();
        if (!first) return first;
        // Only now is there something for a signal to leave behind.
        Interruption::expect();
        tell(first);
        if (options_.talk == Talk::normal && isatty(STDERR_FILENO))
            std::cerr << "Waiting for the next save of " + quotedName(spreadsheet_) + "; Ctrl-C ends it.\n";
        lookOut();
        if (!printFailure_) QCoreApplication::exec();
        return std::unexpected(printFailure_.value_or(""));
    }

private:
    Result exportNow() {
        try {
            const auto source = DeckSource::find(options_);
            if (!source) return std::unexpected(source.error());
            spreadsheet_ = source->spreadsheet;
            // Before the reading, so that a save during it still differs.
            stamp_ = fileStamp(spreadsheet_);
            return make_(options_, *source, own_);
        } catch (const std::exception&) {
            return std::unexpected(unforeseen());
        }
    }

    void tell(const Result& result) {
        if (!result) {
            std::cerr << withTime(result.error());
            return;
        }
        if (options_.talk == Talk::quiet) return;
        if (const auto printed = StandardOutput::print(withTime(*result)); !printed) {
            printFailure_ = printed.error();
            QCoreApplication::quit();
        }
    }

    void exportAgain() {
        // The deck, or a part of it, may have gone; then the stamp keeps this from being told over and over.
        stamp_ = fileStamp(spreadsheet_);
        tell(exportNow());
        lookOut();
    }

    /// The spreadsheet may be somewhere else than before.
    void lookOut() {
        looking_.cancel();
        watcher_ = std::make_unique<FileWatcher>(scheduler_, spreadsheet_, [this] { react(); });
        watcher_->start();
        if (fileStamp(spreadsheet_) != stamp_)
            watcher_->assumeChanged();
        else if (!watcher_->isArmed())
            lookLater();
    }

    void react() {
        if (fileStamp(spreadsheet_) != stamp_)
            exportAgain();
        else if (!watcher_->isArmed())
            lookLater();
    }

    void lookLater() {
        looking_ = scheduler_.later(lookingPause, [this] {
            watcher_->start();
            if (watcher_->isArmed())
                exportAgain();
            else
                lookLater();
        });
    }

    const Options& options_;
    Export make_;
    OwnFiles own_;
    std::filesystem::path spreadsheet_;
    std::optional<std::string> stamp_;  // of the spreadsheet when it was last read
    std::optional<std::string> printFailure_;
    QtScheduler scheduler_;
    std::unique_ptr<FileWatcher> watcher_;
    Scheduler::Task looking_;
};

}  // namespace

Result watch(const Options& options, Export make) {
    // Qt has something to say about locales, which concern nobody here.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    int count = 1;
    char name[] = "quorvel-cli";
    char* arguments[] = {name, nullptr};
    const QCoreApplication application(count, arguments);
    return Watch(options, make).run();
}

}  // namespace quorvel::CommandLine
