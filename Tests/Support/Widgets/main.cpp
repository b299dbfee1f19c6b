#include "Controls/Style.h"
#include "Support/TemporaryFolder.h"

#include <QApplication>
#include <cstdio>
#include <gtest/gtest.h>

namespace {

/// What the toolkit or the program complains of is a failure of the test that it happens in.
void failOnMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    // The platform without a screen can't do everything a screen can.
    if (message.startsWith(QLatin1String("This plugin does not support"))) return;
    ADD_FAILURE() << message.toStdString();
}

}  // namespace

// The program of every test of the window: without a screen, and in a home of its own, since dialogs write down where
// they were and the desktop's settings would show through.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const quorvel::TemporaryFolder home;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("HOME", home.path().c_str());
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, home.path().c_str());
    QApplication application(argc, argv);
    quorvel::Style::apply(application, quorvel::Style::Appearance::light);
    // Nothing turns or fades: with a timer that comes again and again, no event is the last.
    quorvel::Style::setReduceMotion(true);
    qInstallMessageHandler(failOnMessage);
    return RUN_ALL_TESTS();
}
