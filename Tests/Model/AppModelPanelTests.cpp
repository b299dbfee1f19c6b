#include "AppModelTest.h"
#include "Foundation/FileBytes.h"
#include "Templates/TemplateJSON.h"

#include <gmock/gmock.h>

// The model while a panel is shown: its jobs go on, so anything may have changed when the user answers.
namespace quorvel {
namespace {

using std::filesystem::exists;
using testing::IsEmpty;

class AppModelPanels : public AppModelTest {
protected:
    /// While the next panels are shown, decks come and another one is opened, as when a sample arrives.
    void openAnotherDeckWhileShown() {
        desktop.whileShown = [this] {
            // Enough of them that the list of decks moves in memory.
            for (int i = 0; i < 20; ++i) model().newDeck(SampleTemplates::Kind::mini, "Other");
        };
    }

    std::string textOf(const Path& file) { return FileBytes::read(file).value_or(""); }
};

TEST_F(AppModelPanels, ViewsAreToldOfWhatHappensWhileAPanelIsShown) {
    withSpreadsheet("cards.csv", table({"A"}));
    int told = 0;
    const auto subscription = model().subscribe([&](Changes changes) { told += changes.has(Change::tab); });
    int inPanels = 0;
    desktop.whileShown = [&] {
        told = 0;
        model().setTab(state()._tab == Tab::data ? Tab::cards : Tab::data);
        inPanels += told;
    };
    for (const auto& [kind, name] : EnumText<ExportKind>::cases) model().export_(kind);
    model().saveCalibrationPage();
    model().exportTemplate();
    model().importTemplate();
    model().chooseSpreadsheet();
    model().chooseFolder(AppModel::FolderKind::art);
    EXPECT_EQ(inPanels, 8);
    EXPECT_EQ(desktop.asked.size(), 8u);
}

TEST_F(AppModelPanels, WhatIsSavedIsWhatThePanelWasShownFor) {
    withSpreadsheet("cards.csv", table({"A"}));
    const CardTemplate design = model().template_();
    openAnotherDeckWhileShown();
    desktop.answers = {desktop.folder / "design.json"};
    model().exportTemplate();
    EXPECT_EQ(textOf(desktop.folder / "design.json"), templateFileText(design));

    desktop.answers = {desktop.folder / "page.pdf"};
    model().saveCalibrationPage();
    settle();
    EXPECT_TRUE(textOf(desktop.folder / "page.pdf").starts_with("%PDF"));
}

TEST_F(AppModelPanels, AnAnswerNeverReachesADeckThatWasOpenedMeanwhile) {
    withSpreadsheet("cards.csv", table({"A"}));
    const Path file = write("other.csv", table({"B"}));
    const Path design = desktop.folder / "design.json";
    desktop.answers = {design};
    model().exportTemplate();

    openAnotherDeckWhileShown();
    desktop.answers = {design, desktop.folder.path(), desktop.folder.path(), file};
    model().importTemplate();
    model().chooseFolder(AppModel::FolderKind::art);
    model().chooseFolder(AppModel::FolderKind::icons);
    model().chooseSpreadsheet();
    for (const DeckProject& deck : state()._decks) {
        if (deck.name != "Other") continue;
        EXPECT_EQ(deck.template_.size.preset, CardSize::Preset::mini);
        EXPECT_FALSE(deck.artFolder);
        EXPECT_FALSE(deck.iconFolder);
        EXPECT_FALSE(deck.source);
    }
    EXPECT_EQ(state()._error, std::nullopt);
}

TEST_F(AppModelPanels, ADeckThatIsDeletedMeanwhileTakesNoAnswer) {
    const auto shown = [&](auto operation, const Path& answer) {
        withSpreadsheet("cards.csv", table({"A"}));
        desktop.whileShown = [&] { model().deleteDeck(*state()._selection); };
        desktop.answers = {answer};
        operation();
        desktop.whileShown = {};
        settle(Milliseconds(1000));
        EXPECT_THAT(state()._decks, IsEmpty());
        EXPECT_EQ(state()._error, std::nullopt);
    };
    const Path file = write("other.csv", table({"B"}));
    shown([&] { model().chooseFolder(AppModel::FolderKind::art); }, desktop.folder.path());
    shown([&] { model().chooseSpreadsheet(); }, file);
    shown([&] { model().importTemplate(); }, file);
    shown([&] { model().exportTemplate(); }, desktop.folder / "design.json");
    shown([&] { model().saveCalibrationPage(); }, desktop.folder / "page.pdf");
    for (const auto& [kind, name] : EnumText<ExportKind>::cases)
        shown([&] { model().export_(kind); }, desktop.folder / "new.pdf");
    EXPECT_FALSE(exists(desktop.folder / "new.pdf"));
}

TEST_F(AppModelPanels, ImportingNeedsADeck) {
    start();
    model().importTemplate();
    EXPECT_THAT(desktop.asked, IsEmpty());
    model().exportTemplate();
    EXPECT_EQ(desktop.asked.size(), 1u) << "the sample design can be saved";
}

TEST_F(AppModelPanels, TheModelMayEndWhileAPanelIsShown) {
    const auto shown = [&](auto operation) {
        withSpreadsheet("cards.csv", table({"A"}));
        desktop.whileShown = [&] { owned.reset(); };
        operation(*owned);
        desktop.whileShown = {};
        ASSERT_EQ(owned, nullptr);
        settle();
    };
    shown([](AppModel& model) { model.chooseFolder(AppModel::FolderKind::icons); });
    shown([](AppModel& model) { model.chooseSpreadsheet(); });
    shown([](AppModel& model) { model.importTemplate(); });
    shown([](AppModel& model) { model.exportTemplate(); });
    shown([](AppModel& model) { model.saveCalibrationPage(); });
    for (const auto& [kind, name] : EnumText<ExportKind>::cases)
        shown([kind](AppModel& model) { model.export_(kind); });
}

}  // namespace
}  // namespace quorvel
