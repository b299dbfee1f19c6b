#pragma once

#include "Controls/ElidedLabel.h"
#include "TemplateTab/EyeButton.h"
#include "TemplateTab/LayerList.h"
#include "TemplateTab/LayerRow.h"
#include "TemplateTab/LayerRows.h"
#include "TemplateTabTest.h"

#include <QApplication>
#include <QTest>
#include <QToolButton>
#include <string>
#include <vector>

namespace quorvel {

/// The column of layers in a window of its own, which has the keyboard.
class LayerListTest : public TemplateTabTest {
protected:
    LayerList list{model};
    LayerRows& rows = *list.findChild<LayerRows*>();

    LayerListTest() {
        show(list, {220, 500});
        QApplication::setActiveWindow(&list);
    }

    LayerRow& row(std::size_t index) const { return *rows.rows().at(index); }
    LayerRow& row(const QString& name) const {
        for (LayerRow* each : rows.rows())
            if (each->accessibleName() == name) return *each;
        ADD_FAILURE() << "no row is called " << name.toStdString();
        return row(0);
    }
    std::vector<QString> rowNames() const {
        std::vector<QString> names;
        for (const LayerRow* each : rows.rows()) names.push_back(each->findChild<ElidedLabel*>()->text());
        return names;
    }
    EyeButton& eye(const QString& name) const { return *row(name).findChild<EyeButton*>(); }
    QToolButton& tool(const QString& name) const { return *find<QToolButton>(list, name); }
    using TemplateTabTest::click;
    /// Beside all controls of the row.
    static void click(LayerRow& row) { QTest::mouseClick(&row, Qt::LeftButton, {}, QPoint(4, row.height() / 2)); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&rows, key, modifiers); }
    void addLayers(int count) {
        CardTemplate next = model.template_();
        for (int i = 0; i < count; ++i)
            next.front.emplace_back("Layer " + std::to_string(i), LayerKind::shape, Frame{1, 1, 5, 5}, "");
        model.setTemplate(next);
        settle();
    }
    bool isSeen(LayerRow& row) const {
        const QRect place(row.mapTo(rows.viewport(), QPoint()), row.size());
        return rows.viewport()->rect().contains(place);
    }
};

}  // namespace quorvel
