// The library's window, where the running application's test does not drive it.

#include "QuilloApp/Library/LibraryWindow.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "LibraryWindowFixture.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LibraryWindowTest : public LibraryWindowFixture {};

TEST_F(LibraryWindowTest, keysStepOverDaysAndTheInspectorShowsTheCurrentCapture) {
  storeSome();
  open();
  list().setFocus();
  press(Qt::Key_Home);
  EXPECT_EQ(ids[0], state().selection);
  for (int step = 0; step < 3; ++step) press(Qt::Key_Down);
  EXPECT_THAT(selected(), ElementsAre(ids[3]));
  press(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_THAT(selected(), ElementsAre(ids[2], ids[3]));
  EXPECT_EQ(ids[2], state().selection);
}

TEST_F(LibraryWindowTest, searchAndFilterNarrowTheListAndEscapeShowsAll) {
  storeSome();
  open();
  auto& search = named<QLineEdit>("search");
  auto& filter = named<QComboBox>("applicationFilter");
  EXPECT_EQ("All applications (6)", filter.itemText(0).toStdString());
  EXPECT_EQ("Terminal (2)", filter.itemText(2).toStdString());
  QTest::keyClicks(&search, QStringLiteral("tide"));
  settleAll();
  EXPECT_THAT(shown(), ElementsAre("Tide tables for the northern coast"));
  search.setFocus();
  press(Qt::Key_Return);
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

}  // namespace
}  // namespace quillo::test
