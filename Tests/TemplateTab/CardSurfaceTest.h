#pragma once

#include "TemplateTab/CardSurface.h"
#include "TemplateTabTest.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTest>
#include <QVBoxLayout>
#include <string_view>
#include <vector>

namespace quorvel {

/// The card in a window, beside a field that could have the keyboard.
class CardSurfaceTest : public TemplateTabTest {
protected:
    /// Remembers the keys that nobody below wanted.
    struct Window : QWidget {
        std::vector<int> unhandled;

        void keyPressEvent(QKeyEvent* event) override {
            const int key = event->key();
            if (key != Qt::Key_Shift && key != Qt::Key_Control && key != Qt::Key_Alt && key != Qt::Key_Meta)
                unhandled.push_back(key);
        }
    };

    Window window;
    CardSurface& surface = *new CardSurface(model);
    QLineEdit& field = *new QLineEdit;
    Announcer::Subscription subscription = model.subscribe([this](Changes changes) { surface.refresh(changes); });

    CardSurfaceTest() {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&surface, 1);
        column->addWidget(&field);
        show(window, {600, 700});
        QApplication::setActiveWindow(&window);
    }

    double scale() const { return surface.geometry().scale(); }
    QPoint at(double xMM, double yMM) const {
        const Rect place = surface.geometry().rect({xMM, yMM, 0, 0});
        return QPointF(place.x, place.y).toPoint();
    }
    QPoint middle(std::string_view name) const {
        const Frame& frame = layer(name).frame;
        return at(frame.x + frame.width / 2, frame.y + frame.height / 2);
    }
    QPoint handle(std::string_view name) const {
        const Rect handle = surface.geometry().handle(layer(name).frame);
        return QPointF(handle.midX(), handle.midY()).toPoint();
    }
    void press(QPoint point, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(&surface, button, {}, point);
    }
    void moveTo(QPoint point) { QTest::mouseMove(&surface, point); }
    void release(QPoint point, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(&surface, button, {}, point);
    }
    void click(QPoint point) { QTest::mouseClick(&surface, Qt::LeftButton, {}, point); }
    void drag(QPoint from, QPoint by) {
        press(from);
        moveTo(from + by / 2);
        moveTo(from + by);
        release(from + by);
    }
    void moveExactly(QPointF to) {
        QMouseEvent event(QEvent::MouseMove, to, surface.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&surface, &event);
    }
    double snapped(double start, int points) const { return CanvasGeometry::snapped(start + points / scale()); }
    Frame frame(std::string_view name) const { return layer(name).frame; }

    /// No drag is open any more: what moves now moves nothing, and the next edit is a step of its own.
    void expectNoDrag() {
        const CardTemplate before = model.template_();
        moveTo({10, 10});
        EXPECT_EQ(model.template_(), before);
        const std::size_t steps = undo->undoCount();
        CardTemplate next = before;
        next.safeMM += 1;
        model.setTemplate(next);
        EXPECT_EQ(undo->undoCount(), steps + 1);
        EXPECT_EQ(undoName(), "Edit Template");
        model.undo();
    }
};

}  // namespace quorvel
