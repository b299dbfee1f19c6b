#pragma once

#include "Controls/ElidedLabel.h"
#include "Controls/Picker.h"
#include "Controls/SymbolLabel.h"
#include "DataTab/DataView.h"
#include "DataTab/FileRow.h"
#include "Support/Widgets/WindowTest.h"
#include "Support/WorkbookWriter.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

inline constexpr std::string_view plainDeck =
    "Name,Rules,Price,Kind,Image,Icons,Qty,Flavor\n"
    "Pear,Gain 2.,1,Fruit,,coin,2,sweet\n"
    "Plum,\"Draw.\nDiscard.\",2,Fruit,,,1,sour\n";

/// A workbook of worksheets of these names with one card each.
inline std::string workbook(const std::vector<std::string>& names) {
    test::WorkbookParts parts;
    for (const std::string& name : names)
        parts.sheets.push_back(
            {name, test::worksheetXML("<row><c t=\"inlineStr\"><is><t>Name</t></is></c><c t=\"inlineStr\"><is><t>Of " +
                                      name + "</t></is></c></row><row><c t=\"inlineStr\"><is><t>Card of " + name +
                                      "</t></is></c></row>")});
    return test::workbookBytes(parts);
}

/// The view on the screen, without a deck.
class DataViewTest : public WindowTest {
protected:
    DataView view{model};

    DataViewTest() { show(view); }

    void click(const QString& button) { QTest::mouseClick(find<QPushButton>(view, button), Qt::LeftButton); }
    FileRow* row(const QString& name) { return find<FileRow>(view, name); }
    ElidedLabel* nameIn(const QString& name) { return row(name)->findChild<ElidedLabel*>(); }
    QString textIn(const QString& name) {
        const auto* sentence = row(name)->findChild<QLabel*>();
        return sentence->isVisible() ? sentence->text() : nameIn(name)->text();
    }
    Picker* picker(const QString& name) { return find<Picker>(view, name); }
    SymbolLabel* eye() { return find<SymbolLabel>(view, QStringLiteral("Watching for changes")); }
    DataTableView* table() { return view.findChild<DataTableView*>(); }
    QString cell(int row, int column) { return table()->model()->index(row, column).data().toString(); }
    QLabel* missingPictures() {
        for (QLabel* label : view.findChildren<QLabel*>())
            if (label->accessibleName().contains(QLatin1String("pictures not found"))) return label;
        return nullptr;
    }
    std::optional<std::string> mapped(Field field) { return model.currentProject()->mapping.column(field); }
    /// Goes down the entries to one of them, as one does with the keyboard.
    void choose(Picker* picker, int index) {
        picker->setFocus();
        QTest::keyClick(picker, Qt::Key_Home);
        for (int i = 0; i < index; ++i) QTest::keyClick(picker, Qt::Key_Down);
    }
};

}  // namespace quorvel
