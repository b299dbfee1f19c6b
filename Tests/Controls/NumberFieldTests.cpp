#include "Controls/NumberField.h"
#include "Support/Widgets/WindowTest.h"

#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <cmath>
#include <limits>
#include <random>

namespace quorvel {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const QLocale english(QLocale::English, QLocale::UnitedStates);
const QLocale german(QLocale::German, QLocale::Germany);
const QLocale french(QLocale::French, QLocale::France);
const QLocale swedish(QLocale::Swedish, QLocale::Sweden);

/// A window with two fields, English unless told otherwise; the first is typed into.
class NumberFieldTest : public WindowTest {
protected:
    QWidget window;
    NumberField* width = new NumberField("Width", "mm");
    NumberField* height = new NumberField("Height", "mm");
    QLineEdit* input = width->findChild<QLineEdit*>();
    std::vector<double> edits;

    NumberFieldTest() {
        window.setLocale(english);
        auto* column = new QVBoxLayout(&window);
        column->addWidget(width);
        column->addWidget(height);
        QObject::connect(width, &NumberField::valueEdited, &window, [this](double value) { edits.push_back(value); });
        show(window, {300, 200});
        width->setValue(12.5);
        width->setFocus();
    }

    /// Replaces what the field shows.
    void type(const QString& text) {
        input->selectAll();
        if (text.isEmpty()) QTest::keyClick(input, Qt::Key_Delete);
        QTest::keyClicks(input, text);
    }
    void typeAndReturn(const QString& text) {
        type(text);
        QTest::keyClick(input, Qt::Key_Return);
    }

    /// The owner takes what is typed, as one does that has no limits.
    void accept() { QObject::connect(width, &NumberField::valueEdited, width, &NumberField::setValue); }
};

}  // namespace

TEST(NumberFieldTextTest, ANumberIsPrintedWithNoneToTwoDecimals) {
    const struct {
        double value;
        const char* english;
        const char* german;
    } cases[] = {
        {0, "0", "0"},
        {3, "3", "3"},
        {63.5, "63.5", "63,5"},
        {88.9, "88.9", "88,9"},
        {6.35, "6.35", "6,35"},
        {0.05, "0.05", "0,05"},
        {2.999, "3", "3"},
        {2.994, "2.99", "2,99"},
        {-1.5, "-1.5", "-1,5"},
        {-0.0, "0", "0"},
        {-0.004, "0", "0"},
        {-0.006, "-0.01", "-0,01"},
        {-0.4, "-0.4", "-0,4"},
        {100, "100", "100"},
        {1234.5, "1,234.5", "1.234,5"},
        {1e6, "1,000,000", "1.000.000"},
        {infinity, "", ""},
        {-infinity, "", ""},
        {notANumber, "", ""},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(NumberField::print(each.value, english).toStdString(), each.english);
        EXPECT_EQ(NumberField::print(each.value, german).toStdString(), each.german);
    }
}

TEST(NumberFieldTextTest, ANumberIsReadInTheLocale) {
    const struct {
        const char* text;
        const QLocale& locale;
        std::optional<double> value;
    } cases[] = {
        {"12", english, 12},
        {"  12.5\t", english, 12.5},
        {"12.", english, 12},
        {".5", english, 0.5},
        {"-.5", english, -0.5},
        {"+3", english, 3},
        {"-0", english, 0},
        {"1,234.5", english, 1234.5},
        {"1234.5", english, 1234.5},
        {"3.175", english, 3.175},
        {"12,5", german, 12.5},
        {"1.234,5", german, 1234.5},
        {"1234,5", german, 1234.5},
        {",5", german, 0.5},
        {"1\u202f234,5", french, 1234.5},
        {"\u221212,5", swedish, -12.5},
        {"-12,5", swedish, -12.5},
        {"\u221212.5", english, -12.5},
        {"", english, std::nullopt},
        {" ", english, std::nullopt},
        {"-", english, std::nullopt},
        {".", english, std::nullopt},
        {"abc", english, std::nullopt},
        {"12 mm", english, std::nullopt},
        {"1.2.3", english, std::nullopt},
        {"12.5", german, std::nullopt},
        {"12,5", english, std::nullopt},
        {"--1", english, std::nullopt},
        {"-\u22121", english, std::nullopt},
        {"-+1", english, std::nullopt},
        {"0x10", english, std::nullopt},
        {"nan", english, std::nullopt},
        {"inf", english, std::nullopt},
        {"-inf", english, std::nullopt},
        {"Infinity", english, std::nullopt},
        {"1e999", english, std::nullopt},
    };
    for (const auto& each : cases)
        EXPECT_EQ(NumberField::parse(QString::fromUtf8(each.text), each.locale), each.value)
            << "\"" << each.text << "\" in " << each.locale.name().toStdString();
    EXPECT_EQ(NumberField::parse(QString(400, u'9'), english), std::nullopt);
    EXPECT_EQ(NumberField::parse(QString(100'000, u'x'), english), std::nullopt);
}

TEST(NumberFieldTextTest, WhatIsPrintedIsReadBackInEveryLocale) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> hundredths(-9'999'999, 9'999'999);
    for (const QLocale& locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
        for (int i = 0; i < 20; ++i) {
            const double value = hundredths(random) / 100.0;
            const QString printed = NumberField::print(value, locale);
            ASSERT_EQ(NumberField::parse(printed, locale), value)
                << printed.toStdString() << " in " << locale.name().toStdString();
        }
    }
}

TEST(NumberFieldTextTest, HugeNumbersAreReadBack) {
    for (const double value : {1e15, 1e100, -1e300, std::numeric_limits<double>::max()})
        EXPECT_EQ(NumberField::parse(NumberField::print(value, german), german), value);
}

TEST_F(NumberFieldTest, TheFieldIsSeventyWideAndTheUnitFourBehind) {
    const auto* unit = width->findChild<QLabel*>();
    ASSERT_TRUE(unit);
    EXPECT_EQ(input->width(), 70);
    EXPECT_EQ(unit->text(), "mm");
    EXPECT_EQ(unit->x(), input->geometry().right() + 1 + 4);
    EXPECT_EQ(input->accessibleName(), "Width");
    EXPECT_EQ(input->accessibleDescription(), "mm");
    EXPECT_EQ(unnamedControls(window), std::vector<std::string>());
}

TEST_F(NumberFieldTest, ReturnTabAndLeavingCommit) {
    accept();
    typeAndReturn("13");
    EXPECT_EQ(edits, std::vector<double>({13}));
    EXPECT_TRUE(input->hasFocus());
    EXPECT_EQ(input->selectedText(), "13");

    type("14");
    QTest::keyClick(input, Qt::Key_Tab);
    EXPECT_EQ(edits, std::vector<double>({13, 14}));
    EXPECT_TRUE(height->findChild<QLineEdit*>()->hasFocus());

    QTest::mouseClick(input, Qt::LeftButton);
    type("15.25");
    QTest::mouseClick(height->findChild<QLineEdit*>(), Qt::LeftButton);
    EXPECT_EQ(edits, std::vector<double>({13, 14, 15.25}));

    QTest::mouseClick(input, Qt::LeftButton);
    type("16");
    width->hide();
    EXPECT_EQ(edits, std::vector<double>({13, 14, 15.25, 16}));
}

TEST_F(NumberFieldTest, WhatDoesNotParseLeavesTheOldValue) {
    for (const char* text : {"", "abc", "12,5", "1.2.3", "nan", "inf", "1e999", "-"}) {
        typeAndReturn(text);
        EXPECT_EQ(input->text(), "12.5") << text;
    }
    EXPECT_EQ(width->value(), 12.5);
    EXPECT_TRUE(edits.empty());
}

TEST_F(NumberFieldTest, AnUnchangedValueIsNeverCommitted) {
    QTest::keyClick(input, Qt::Key_Return);
    typeAndReturn("12.5");
    typeAndReturn("12.50");
    typeAndReturn(" 12.5 ");
    EXPECT_TRUE(edits.empty());
    EXPECT_EQ(input->text(), "12.5");

    // More decimals than are shown survive a visit of the field, and the text that is shown typed again.
    width->setValue(3.176);
    QTest::keyClick(input, Qt::Key_Return);
    QTest::keyClick(input, Qt::Key_Tab);
    width->setFocus();
    typeAndReturn("3.18");
    EXPECT_TRUE(edits.empty());
    EXPECT_EQ(width->value(), 3.176);
}

TEST_F(NumberFieldTest, MoreDecimalsThanAreShownAreKept) {
    accept();
    typeAndReturn("3.1759");
    EXPECT_EQ(edits, std::vector<double>({3.1759}));
    EXPECT_EQ(input->text(), "3.18");
}

TEST_F(NumberFieldTest, EscapeRestores) {
    type("99");
    QTest::keyClick(input, Qt::Key_Escape);
    EXPECT_EQ(input->text(), "12.5");
    QTest::keyClick(input, Qt::Key_Tab);
    EXPECT_TRUE(edits.empty());
}

TEST_F(NumberFieldTest, EscapeWithNothingTypedIsTheWindows) {
    int escapes = 0;
    QObject::connect(new QShortcut(Qt::Key_Escape, &window), &QShortcut::activated, [&] { ++escapes; });
    type("99");
    QTest::keyClick(input, Qt::Key_Escape);
    EXPECT_EQ(escapes, 0);
    QTest::keyClick(input, Qt::Key_Escape);
    EXPECT_EQ(escapes, 1);
}

TEST_F(NumberFieldTest, UndoIsTheWindowsOnceNothingIsTyped) {
    int undos = 0;
    QObject::connect(new QShortcut(QKeySequence::Undo, &window), &QShortcut::activated, [&] { ++undos; });
    type("99");
    QTest::keyClick(input, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undos, 0);
    EXPECT_NE(input->text(), "99");
    QTest::keyClick(input, Qt::Key_Escape);
    QTest::keyClick(input, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undos, 1);
}

TEST_F(NumberFieldTest, TheFieldShowsWhatItsOwnerMakesOfIt) {
    QObject::connect(width, &NumberField::valueEdited, width,
                     [this](double value) { width->setValue(std::min(value, 40.0)); });
    typeAndReturn("50");
    EXPECT_EQ(input->text(), "40");
    typeAndReturn("50");  // the owner changes nothing now
    EXPECT_EQ(input->text(), "40");
    EXPECT_EQ(edits, std::vector<double>({50, 50}));
}

TEST_F(NumberFieldTest, WithoutAnAnswerTheOldValueComesBack) {
    typeAndReturn("50");
    EXPECT_EQ(edits, std::vector<double>({50}));
    EXPECT_EQ(input->text(), "12.5");
}

TEST_F(NumberFieldTest, TypingOutlivesTheSameValueAndYieldsToAnother) {
    type("77");
    width->setValue(12.5);
    EXPECT_EQ(input->text(), "77");
    width->setValue(20);
    EXPECT_EQ(input->text(), "20");
    QTest::keyClick(input, Qt::Key_Return);
    EXPECT_TRUE(edits.empty());
}

TEST_F(NumberFieldTest, RestoringDropsWhatIsTyped) {
    type("77");
    width->restore();
    QTest::keyClick(input, Qt::Key_Tab);
    EXPECT_EQ(input->text(), "12.5");
    EXPECT_TRUE(edits.empty());
}

TEST_F(NumberFieldTest, ShowingTheSameValueKeepsTheSelection) {
    input->setSelection(1, 2);
    width->setValue(12.5);
    EXPECT_EQ(input->selectedText(), "2.");
}

TEST_F(NumberFieldTest, AnotherLocaleShowsAnotherSign) {
    accept();
    window.setLocale(german);
    EXPECT_EQ(input->text(), "12,5");
    typeAndReturn("1.234,56");
    EXPECT_EQ(edits, std::vector<double>({1234.56}));
    EXPECT_EQ(input->text(), "1.234,56");
}

TEST_F(NumberFieldTest, AnythingMayBeTyped) {
    accept();
    std::mt19937 random(11);
    const QString keys = "0123456789.,-+eE nainf %x";
    for (int round = 0; round < 500; ++round) {
        QString typed;
        for (int i = int(random() % 9); i > 0; --i) typed += keys[int(random() % unsigned(keys.size()))];
        const double before = width->value();
        typeAndReturn(typed);
        const auto parsed = NumberField::parse(typed, english);
        ASSERT_EQ(width->value(), parsed.value_or(before)) << typed.toStdString();
        ASSERT_EQ(input->text(), NumberField::print(width->value(), english)) << typed.toStdString();
    }
    for (const double value : edits) ASSERT_TRUE(std::isfinite(value));
}

}  // namespace quorvel
