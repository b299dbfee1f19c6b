#include "Shots/Stage.h"

#include "Support/Desktop/EventLoop.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QTest>
#include <QToolButton>
#include <QUrl>
#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace quorvel {

namespace {

/// The frame that a window manager would draw, as far as it helps to tell a dialog from what is behind it.
void drawFrame(QPainter& painter, const QRect& place) {
    constexpr int reach = 12;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int ring = reach; ring > 0; --ring) {
        painter.setBrush(QColor(0, 0, 0, 8));
        painter.drawRoundedRect(place.adjusted(-ring, -ring + 3, ring, ring + 3), ring, ring);
    }
    painter.restore();
}

}  // namespace

Stage::Stage(QSize size) {
    show(window, size);
    QApplication::setActiveWindow(&window);
    settle();
}

void Stage::openLibrary() {
    model.newDeck(SampleTemplates::Kind::tarot, "Lanterns of the Deep");
    model.newDeck(SampleTemplates::Kind::mini, "Harbour Tokens");
    model.newDeck(SampleTemplates::Kind::classic, "The Long Winter: Expansion with a Name That Takes Its Time");
    openSample();
    settle(AppModel::noticeTime);
}

std::filesystem::path Stage::openTrouble() {
    std::string text = "Name,Text,Type,Cost,Art,Icons,Qty\n";
    const std::string_view types[] = {"Courier", "Orchard", "Event"};
    const std::string_view quantities[] = {"1", "3", "0", "many", ""};
    for (int i = 1; i <= 30; ++i) {
        const std::string number = std::to_string(i);
        text += (i == 7 ? "" : "Card **" + number + "**" + (i % 4 == 0 ? " with a name too long for its tile" : ""));
        text += ",\"Gain " + number + " {icon:coin}. **Draw** a card.\",";
        text.append(types[i % 3]).append("," + std::to_string(i % 6) + ",");
        text += (i <= 5 ? "art/picture " + number + ".png" : "") + ",\"coin, leaf\",";
        text.append(quantities[i % 5]).append("\n");
    }
    return open("Orchard with trouble.csv", text);
}

void Stage::setTab(Tab tab) {
    model.setTab(tab);
    settle();
}

void Stage::edit(const std::function<void(DeckProject&)>& change) {
    DeckProject deck = *model.currentProject();
    change(deck);
    model.updateProject(deck);
    settle();
}

void Stage::exportHalfway(ExportKind kind) {
    desktop.answers = {desktop.folder / "out"};
    model.export_(kind);
    scheduler.runBackground(1);
    scheduler.deliver(scheduler.tailCount() / 2);
}

void Stage::choose(const QString& words) {
    for (QAction* each : window.findChildren<QAction*>())
        if (each->text().remove('&') == words) {
            each->trigger();
            return settle();
        }
    throw std::runtime_error("no menu has the item " + words.toStdString());
}

void Stage::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget* focused = QApplication::focusWidget();
    QTest::keyClick(focused ? focused : &window, key, modifiers);
    settle();
}

void Stage::openMenu(const QString& name) {
    for (auto* each : window.findChildren<QToolButton*>())
        if (nameOf(*each) == name && each->menu()) {
            // Where it is drawn the screen ends with the window.
            const int right = window.width() - each->menu()->sizeHint().width();
            const QPoint below = each->mapTo(&window, QPoint(0, each->height()));
            each->menu()->popup(window.mapToGlobal(QPoint(std::min(below.x(), right), below.y())));
            return settle();
        }
    throw std::runtime_error("no button has the menu " + name.toStdString());
}

void Stage::openMenuOfBar(const QString& title) {
    QMenuBar& bar = *window.menuBar();
    for (QAction* each : bar.actions())
        if (each->text().remove('&') == title) {
            each->menu()->popup(bar.mapToGlobal(bar.actionGeometry(each).bottomLeft()));
            return settle();
        }
    throw std::runtime_error("there is no menu " + title.toStdString());
}

void Stage::drag(const std::filesystem::path& file) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(file.string()))});
    QDragEnterEvent event(window.rect().center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &event);
}

QPixmap Stage::picture() {
    QApplication::sendPostedEvents();
    runWhatWaits();
    QPixmap picture = window.grab();
    QPainter painter(&picture);
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each == &window || !each->isVisible()) continue;
        const QRect place(each->pos() - window.pos(), each->size());
        drawFrame(painter, place);
        painter.drawPixmap(place.topLeft(), each->grab());
    }
    return picture;
}

}  // namespace quorvel
