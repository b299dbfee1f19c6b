#include "Controls/ScreenReader.h"
#include "Support/Widgets/WindowTest.h"

#include <QAccessible>
#include <QLabel>

namespace quorvel {
namespace {

TEST(ScreenReader, givesTheRoleOfAnAlertToThatWidgetOnly) {
    QWidget alert;
    ScreenReader::makeAlert(&alert);
    alert.setAccessibleName("It rains");
    QLabel inside("It rains", &alert);
    QWidget other;
    const auto role = [](QWidget* widget) { return QAccessible::queryAccessibleInterface(widget)->role(); };
    EXPECT_EQ(role(&alert), QAccessible::AlertMessage);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&alert)->text(QAccessible::Name), "It rains");
    EXPECT_EQ(role(&inside), QAccessible::StaticText);
    EXPECT_NE(role(&other), QAccessible::AlertMessage);
    ScreenReader::speak(&alert);  // with nobody listening
}

}  // namespace
}  // namespace quorvel
