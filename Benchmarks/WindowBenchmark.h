#pragma once

#include "Controls/Style.h"

#include <QApplication>

namespace quorvel {

/// The program without a screen, made when it is first asked for, that views are measured in.
inline QApplication& application() {
    static int count = 1;
    static char name[] = "WindowBenchmark";
    static char* arguments[] = {name, nullptr};
    static QApplication& one = [&]() -> QApplication& {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        auto* const made = new QApplication(count, arguments);  // as long as the program
        Style::apply(*made, Style::Appearance::light);
        return *made;
    }();
    return one;
}

}  // namespace quorvel
