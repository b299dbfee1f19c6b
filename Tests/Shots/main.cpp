// WindowShots FOLDER [light|dark]: a picture of every screen into the folder, as <screen>-<light or dark>-<scale>x.png.
// The scale is QT_SCALE_FACTOR's. WindowShots --list: the names of the screens.

#include "Controls/Style.h"
#include "Shots/Screens.h"
#include "Support/TemporaryFolder.h"

#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace {

using namespace quorvel;

void printMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
    // The platform without a screen can't do everything a screen can.
    if (message.startsWith(QLatin1String("This plugin does not support"))) return;
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

/// False when it couldn't be written.
bool shoot(const Screen& screen, const std::filesystem::path& folder, const std::string& look) {
    Stage stage(screen.size);
    screen.bring(stage);
    const QPixmap picture = stage.picture();
    const auto scale = std::to_string(int(picture.devicePixelRatio()));
    const auto file = folder / (std::string(screen.name) + "-" + look + "-" + scale + "x.png");
    return picture.save(QString::fromStdString(file.string()));
}

int shootAll(const std::filesystem::path& folder, const std::string& look) {
    std::filesystem::create_directories(folder);
    for (const Screen& screen : screens()) try {
            if (shoot(screen, folder, look)) continue;
            std::fprintf(stderr, "%s can't be written\n", screen.name);
            return 1;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", screen.name, error.what());
            return 1;
        }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string look = argc > 2 ? argv[2] : "light";
    if (argc < 2 || argc > 3 || (look != "light" && look != "dark")) {
        std::fputs("Usage: WindowShots FOLDER [light|dark]\n", stderr);
        return 2;
    }
    if (argv[1] == std::string_view("--list")) {
        for (const Screen& screen : screens()) std::puts(screen.name);
        return 0;
    }
    // The same pictures everywhere: no screen, no settings of this user, a time that is written as here.
    const TemporaryFolder home;
    qInstallMessageHandler(printMessage);
    const auto screen = home / "screen.json";
    std::ofstream(screen) << R"({"screens": [{"name": "Screen", "x": 0, "y": 0, "width": 2560, "height": 1600,
                                 "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    qputenv("QT_QPA_PLATFORM", QByteArray("offscreen:configfile=") + screen.c_str());
    qputenv("TZ", "UTC");
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, home.path().c_str());
    const std::filesystem::path folder = std::filesystem::absolute(argv[1]);
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QApplication::setApplicationVersion("1.4");
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(":/icons/128.png"));
    Style::apply(application, look == "dark" ? Style::Appearance::dark : Style::Appearance::light);
    return shootAll(folder, look);
}
