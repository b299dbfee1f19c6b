#pragma once

#include "Controls/Wording.h"
#include "Shell/MainWindow.h"
#include "Shell/RootView.h"
#include "Shell/Updater.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/Widgets/WindowTest.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

namespace quorvel {

/// The whole window, shown and with the keyboard.
class ShellTest : public WindowTest {
protected:
    Updater updater{scheduler, desktop, QUrl(), "1.0"};
    MainWindow window{model, desktop, updater};

    ShellTest() {
        show(window, window.size());
        QApplication::setActiveWindow(&window);
    }

    /// A menu of the menu bar by its title without the mark of its key, or a submenu by its title.
    QMenu* menu(const QString& title) const {
        for (QMenu* each : window.findChildren<QMenu*>())
            if (each->title().remove('&') == title && !qobject_cast<QWidget*>(each->parent())->inherits("QToolButton"))
                return each;
        ADD_FAILURE() << "no menu is called " << title.toStdString();
        return nullptr;
    }

    /// An item as it is read: without marks of keys.
    static QAction* item(const QMenu& menu, const QString& words) {
        for (QAction* each : menu.actions())
            if (read(*each) == words) return each;
        ADD_FAILURE() << "no item is called " << words.toStdString();
        return nullptr;
    }
    QAction* item(const QString& title, const QString& words) const { return item(*menu(title), words); }

    static QString read(const QAction& action) {
        return action.text().replace("&&", "\x01").remove('&').replace('\x01', '&');
    }

    /// The dialog over the window, of which there is one at most.
    template <class Dialog = QDialog>
    Dialog* dialog() const {
        Dialog* found = nullptr;
        for (auto* each : window.findChildren<Dialog*>())
            if (each->isVisible()) {
                if (found) ADD_FAILURE() << "there are two dialogs";
                found = each;
            }
        return found;
    }

    /// All words of a dialog's labels, a line for each.
    static QString words(const QWidget& widget) {
        QStringList lines;
        for (const QLabel* each : widget.findChildren<QLabel*>())
            if (!each->text().isEmpty() && !each->isHidden()) lines << each->text();
        return lines.join('\n');
    }

    static void click(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton); }
    /// A key in the window, which a dialog that has just gone may have left inactive.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        window.activateWindow();
        runWhatWaits();
        QTest::keyClick(&window, key, modifiers);
    }

    const DeckProject& deck(std::size_t index) const { return model.state()._decks.at(index); }
    std::vector<std::string> deckNames() const {
        std::vector<std::string> names;
        for (const DeckProject& each : model.state()._decks) names.push_back(each.name);
        return names;
    }
};

inline constexpr std::string_view threeCards = "Name,Text,Qty\nFire,Burns,1\nWater,Flows,2\nEarth,Stays,1\n";

}  // namespace quorvel
