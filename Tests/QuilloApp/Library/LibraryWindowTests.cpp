// The library's window, driven by keys.

#include "QuilloApp/Library/LibraryWindow.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "LibraryWindowFixture.h"
#include "QuilloApp/Library/QuickLook.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LibraryWindowTest : public LibraryWindowFixture {};

TEST_F(LibraryWindowTest, keysGoFromCaptureToCaptureAndSelectSeveral) {
  storeSome();
  open();
  list().setFocus();
  press(Qt::Key_Home);
  EXPECT_THAT(selected(), ElementsAre(ids[0]));
  EXPECT_EQ(ids[0], state().selection);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  EXPECT_THAT(selected(), ElementsAre(ids[3])) << "a day is stepped over";
  press(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_THAT(selected(), ElementsAre(ids[2], ids[3]));
  EXPECT_EQ(ids[2], state().selection) << "the current one is what the inspector shows";
  press(Qt::Key_End);
  EXPECT_THAT(selected(), ElementsAre(ids[5]));
  press(Qt::Key_Home, Qt::ShiftModifier);
  EXPECT_EQ(6U, selected().size());
  press(Qt::Key_Down, Qt::ControlModifier);
  press(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(5U, selected().size());

  press(Qt::Key_Home);
  press(Qt::Key_Space);
  auto* look = window->findChild<QuickLook*>();
  ASSERT_TRUE(look && look->isVisible());
  EXPECT_EQ("Letter from the harbour", look->windowTitle().toStdString());
  QTest::keyClick(look, Qt::Key_Down);
  settleAll();
  EXPECT_EQ("make check — 612 passed", look->windowTitle().toStdString());
  QTest::keyClick(look, Qt::Key_Escape);
  EXPECT_FALSE(look->isVisible());
}

TEST_F(LibraryWindowTest, severalGoToTheTrashAndComeBack) {
  storeSome();
  open();
  list().setFocus();
  press(Qt::Key_Home);
  press(Qt::Key_Down, Qt::ShiftModifier);
  press(Qt::Key_Delete);
  EXPECT_EQ(4U, shown().size());
  EXPECT_EQ(ids[2], state().selection);
  EXPECT_TRUE(named<QPushButton>("undoTrash").isVisible());
  named<QAction>("undo").trigger();
  settleAll();
  EXPECT_EQ(6U, shown().size());
  EXPECT_EQ(ids[0], state().selection);
  EXPECT_FALSE(named<QPushButton>("undoTrash").isVisible());
}

TEST_F(LibraryWindowTest, searchAndFilterNarrowTheListAndEscapeShowsAll) {
  storeSome();
  open();
  auto& search = named<QLineEdit>("search");
  auto& filter = named<QComboBox>("applicationFilter");
  EXPECT_EQ("All applications (6)", filter.itemText(0).toStdString());
  EXPECT_EQ("Terminal (2)", filter.itemText(2).toStdString());
  named<QAction>("&Find").trigger();
  QTest::keyClicks(&search, QStringLiteral("tide"));
  settleAll();
  EXPECT_THAT(shown(), ElementsAre("Tide tables for the northern coast"));
  EXPECT_EQ("1 of 6 captures", named<QLabel>("count").text().toStdString());
  press(Qt::Key_Return);
  EXPECT_TRUE(list().hasFocus());
  EXPECT_EQ(ids[2], state().selection);
  press(Qt::Key_Escape);
  EXPECT_EQ(6U, shown().size());
  EXPECT_EQ(ids[2], state().selection) << "what was found stays selected";

  Q_EMIT filter.activated(1);
  settleAll();
  EXPECT_THAT(shown(), ElementsAre("Letter from the harbour", "Invoice 2041"));
  QTest::keyClicks(&search, QStringLiteral("walrus"));
  settleAll();
  EXPECT_THAT(shown(), IsEmpty());
  EXPECT_TRUE(named<QLabel>("feedMessage").isVisible());
  named<QPushButton>("showAll").click();
  settleAll();
  EXPECT_EQ(6U, shown().size());
}

TEST_F(LibraryWindowTest, damageIsShownWithItsReasonAndItsWayToTheTrash) {
  storeSome();
  writeFile(repository.bundlePath(ids[1]) / "manifest.json", "{\"schemaVersion\": 3,");
  open();
  model->select(ids[1]);
  settleAll();
  EXPECT_EQ(std::ptrdiff_t{1}, std::ranges::count(shown(), "Damaged capture"));
  list().setFocus();
  press(Qt::Key_Delete);
  EXPECT_EQ(0, std::ranges::count(shown(), "Damaged capture"));
  EXPECT_EQ("success: Artifact moved to Trash", activity());
}

TEST_F(LibraryWindowTest, everyControlHasAName) {
  storeSome();
  open();
  const auto widgets = window->findChildren<QWidget*>();
  for (const QWidget* widget : widgets) {
    if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith("qt_"))
      continue;
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const bool isNamed = !widget->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty());
    const bool isInner = qobject_cast<const QWidget*>(widget->parent())->inherits("QAbstractItemView");
    EXPECT_TRUE(isNamed || isInner) << widget->metaObject()->className() << " " << widget->objectName().toStdString();
  }
}

}  // namespace
}  // namespace quillo::test
