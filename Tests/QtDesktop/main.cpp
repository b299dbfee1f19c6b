#include "Support/TemporaryFolder.h"

#include <QApplication>
#include <gtest/gtest.h>

// Without a screen, and in a home of its own: Qt's dialogs write down where they were.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const quorvel::TemporaryFolder home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("HOME", home.path().c_str());
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) qputenv(name, home.path().c_str());
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
