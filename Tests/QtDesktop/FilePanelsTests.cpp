#include "Foundation/FileBytes.h"
#include "QtDesktop/FilePanels.h"
#include "QtDesktop/QtDesktop.h"
#include "QtPlatform/QtScheduler.h"
#include "QtPlatform/QtText.h"
#include "Support/TemporaryFolder.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::Optional;
using Path = std::filesystem::path;

const FileType workbook{"Excel workbook", {"xlsx"}};
const FileType text{"Text", {"csv", "Tab"}};
const FileType pdf{"PDF document", {"pdf"}};

TEST(FilePanels, filtersByExtensionsInEitherCase) {
    EXPECT_EQ(FilePanels::filter(workbook), "Excel workbook (*.xlsx *.XLSX)");
    EXPECT_EQ(FilePanels::filter(text), "Text (*.csv *.CSV *.tab *.TAB)");
    EXPECT_EQ(FilePanels::filter({"Any", {}}), "Any (*)");
}

TEST(FilePanels, addsTheExtensionThatIsMissing) {
    struct Case {
        std::string typed;
        std::string expected;
    };
    for (const auto& [typed, expected] : std::vector<Case>{
             {"/a/deck", "/a/deck.pdf"},
             {"/a/deck.pdf", "/a/deck.pdf"},
             {"/a/deck.PDF", "/a/deck.PDF"},
             {"/a/deck v1.5", "/a/deck v1.5.pdf"},
             {"/a/deck.txt", "/a/deck.txt.pdf"},
             {"/a/pdf", "/a/pdf.pdf"},
             {"/a/.pdf", "/a/.pdf.pdf"},
             {"/a.pdf/deck", "/a.pdf/deck.pdf"},
             {"/a/Kärtchen", "/a/Kärtchen.pdf"},
         })
        EXPECT_EQ(FilePanels::withExtension(typed, pdf), expected) << typed;
    EXPECT_EQ(FilePanels::withExtension("/a/deck.TAB", text), "/a/deck.TAB");
    EXPECT_EQ(FilePanels::withExtension("/a/deck", text), "/a/deck.csv");
    EXPECT_EQ(FilePanels::withExtension("/a/deck", {"Any", {}}), "/a/deck");
}

// A panel runs a loop of its own, in which the jobs run that were posted before it was shown.
class PanelTest : public testing::Test {
protected:
    template <class Dialog>
    void next(std::function<void(Dialog&)> act) {
        scheduler.post([this, act = std::move(act)] {
            QWidget* const active = QApplication::activeModalWidget();
            auto* const dialog = qobject_cast<Dialog*>(active);
            if (!dialog) {
                ADD_FAILURE() << "another dialog than expected";
                if (active) active->close();
                return;
            }
            ++shown;
            act(*dialog);
        });
    }

    static void type(QFileDialog& dialog, const std::string& name) {
        // What is selected in the list counts for more than the name, unless the name is being typed.
        dialog.findChild<QListView*>("listView")->clearSelection();
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(toQString(name));
    }
    static void accept(QDialog& dialog) { dialog.accept(); }
    static void reject(QDialog& dialog) { dialog.reject(); }

    std::string file(const std::string& name) {
        EXPECT_TRUE(FileBytes::write(folder / name, name));
        return (folder / name).string();
    }

    QtScheduler scheduler;
    TemporaryFolder folder;
    QtDesktop desktop{scheduler, [] { return nullptr; }};
    int shown = 0;
};

TEST_F(PanelTest, choosesAFile) {
    const OpenPanel panel{"Choose the Spreadsheet", "CSV or Excel & more.", {text, workbook}};
    const auto cards = file("Kärtchen „1“.csv");
    next<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Choose the Spreadsheet");
        const auto* message = dialog.findChild<QLabel*>("message");
        ASSERT_TRUE(message);
        EXPECT_EQ(message->text(), "CSV or Excel & more.");
        EXPECT_TRUE(message->isVisible());
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        EXPECT_THAT(dialog.nameFilters(),
                    ElementsAre("All of these (*.csv *.CSV *.tab *.TAB *.xlsx *.XLSX)",
                                "Text (*.csv *.CSV *.tab *.TAB)", "Excel workbook (*.xlsx *.XLSX)"));
        type(dialog, cards);
        accept(dialog);
    });
    EXPECT_THAT(desktop.chooseFile(panel), Optional(Path(cards)));
    EXPECT_EQ(shown, 1);
}

TEST_F(PanelTest, answersNothingWhenItIsCancelled) {
    for (int each = 0; each < 3; ++each) next<QFileDialog>(reject);
    EXPECT_EQ(desktop.chooseFile({"Title", "", {workbook}}), std::nullopt);
    EXPECT_EQ(desktop.chooseFolder({"Title", "", "Use", std::nullopt}), std::nullopt);
    EXPECT_EQ(desktop.chooseSaveFile({"Title", pdf, "deck.pdf"}), std::nullopt);
    EXPECT_EQ(shown, 3);
}

TEST_F(PanelTest, opensWhereTheUserWas) {
    std::filesystem::create_directory(folder / "inner");
    file("inner/cards.csv");
    next<QFileDialog>([&](QFileDialog& dialog) {
        type(dialog, (folder / "inner/cards.csv").string());
        accept(dialog);
    });
    EXPECT_TRUE(desktop.chooseFile({"Title", "", {text}}));
    next<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(toPath(dialog.directory().absolutePath()), folder / "inner");
        reject(dialog);
    });
    EXPECT_FALSE(desktop.chooseSaveFile({"Title", pdf, "deck.pdf"}));
    EXPECT_EQ(shown, 2);
}

TEST_F(PanelTest, choosesAFolderFromItsStart) {
    std::filesystem::create_directories(folder / "start/art");
    next<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Choose the Art Folder");
        EXPECT_EQ(dialog.labelText(QFileDialog::Accept), "Use Folder");
        EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
        EXPECT_EQ(toPath(dialog.directory().absolutePath()), folder / "start");
        type(dialog, "art");
        accept(dialog);
    });
    EXPECT_THAT(desktop.chooseFolder({"Choose the Art Folder", "The pictures.", "Use Folder", folder / "start"}),
                Optional(folder / "start/art"));
    EXPECT_EQ(shown, 1);
}

TEST_F(PanelTest, proposesANameAndAddsTheExtension) {
    next<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_THAT(dialog.nameFilters(), ElementsAre("PDF document (*.pdf *.PDF)"));
        EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "Deck 1.5 print sheets.pdf");
        type(dialog, (folder / "mine v2.0").string());
        accept(dialog);
    });
    EXPECT_THAT(desktop.chooseSaveFile({"Save", pdf, "Deck 1.5 print sheets.pdf"}), Optional(folder / "mine v2.0.pdf"));
    EXPECT_EQ(shown, 1);
}

TEST_F(PanelTest, asksOnceBeforeItReplacesWhatWasTyped) {
    const auto old = file("deck.pdf");
    next<QFileDialog>([&](QFileDialog& dialog) {
        type(dialog, old);
        next<QMessageBox>([](QMessageBox& question) { question.button(QMessageBox::Yes)->click(); });
        accept(dialog);
    });
    EXPECT_THAT(desktop.chooseSaveFile({"Save", pdf, "deck.pdf"}), Optional(Path(old)));
    EXPECT_EQ(shown, 2);
}

TEST_F(PanelTest, asksBeforeItReplacesWhatTheExtensionMadeOfTheName) {
    file("deck.pdf");
    const auto typed = (folder / "deck").string();
    const auto press = [](QMessageBox::ButtonRole role) {
        return [role](QMessageBox& question) {
            EXPECT_EQ(question.text().toStdString(), "“deck.pdf” already exists. Do you want to replace it?");
            for (QAbstractButton* button : question.buttons())
                if (question.buttonRole(button) == role) return button->click();
            ADD_FAILURE() << "no such button";
            question.reject();
        };
    };
    next<QFileDialog>([&](QFileDialog& dialog) {
        type(dialog, typed);
        next<QMessageBox>(press(QMessageBox::RejectRole));
        next<QFileDialog>([&](QFileDialog& again) {
            EXPECT_EQ(toPath(again.directory().absolutePath()), folder.path());
            EXPECT_EQ(again.findChild<QLineEdit*>("fileNameEdit")->text(), "deck.pdf");
            type(again, typed);
            next<QMessageBox>(press(QMessageBox::DestructiveRole));
            accept(again);
        });
        accept(dialog);
    });
    EXPECT_THAT(desktop.chooseSaveFile({"Save", pdf, "deck.pdf"}), Optional(folder / "deck.pdf"));
    EXPECT_EQ(shown, 4);
}

}  // namespace
}  // namespace quorvel
