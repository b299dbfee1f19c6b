#include "Application/Application.h"
#include "Application/StartOptions.h"
#include "Controls/Style.h"

#include <QApplication>
#include <QIcon>
#include <cstdio>
#include <span>
#include <string>

namespace {

using namespace quorvel;

std::span<const char* const> withoutName(int argc, char** argv) {
    return std::span<const char* const>(argv, std::size_t(argc)).subspan(argc > 0 ? 1 : 0);
}

int answer(const StartOptions& options) {
    if (options.kind == StartOptions::Kind::help)
        std::fputs(StartOptions::help(), stdout);
    else
        std::puts("Quorvel " QUORVEL_VERSION);
    return std::fflush(stdout) == 0 ? 0 : 1;
}

QIcon windowIcon() {
    QIcon drawn;
    for (const int size : {16, 32, 48, 64, 128, 256}) drawn.addFile(QString(":/icons/%1.png").arg(size));
    return QIcon::fromTheme(QUORVEL_ID, drawn);
}

}  // namespace

int main(int argc, char** argv) {
    if (StartOptions::isQuestion(withoutName(argc, argv))) return answer(StartOptions::parse(withoutName(argc, argv)));

    // Before the toolkit takes it for its own first window.
    const std::string activationToken = qgetenv("XDG_ACTIVATION_TOKEN").toStdString();
    QApplication toolkit(argc, argv);
    // What the toolkit understands is out of the arguments now.
    const StartOptions options = StartOptions::parse(withoutName(argc, argv));
    if (options.kind == StartOptions::Kind::wrong) {
        std::fprintf(stderr, "quorvel: there is no option %s; see quorvel --help\n", options.wrong.c_str());
        return 2;
    }
    QApplication::setApplicationName("Quorvel");
    QApplication::setApplicationVersion(QUORVEL_VERSION);
    QApplication::setDesktopFileName(QUORVEL_ID);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(windowIcon());
    Style::apply(toolkit);

    Application application({options.files, activationToken});
    return application.run();
}
