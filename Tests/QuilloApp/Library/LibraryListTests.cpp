#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QFile>
#include <QImage>
#include <QSignalSpy>
#include <chrono>
#include <numeric>
#include <string>

#include "OffscreenApplication.h"
#include "QuilloApp/Interface/MainLoop.h"
#include "QuilloApp/Interface/QtThumbnailDecoder.h"
#include "QuilloApp/Interface/Thumbnails.h"
#include "QuilloApp/Library/ArtifactListModel.h"
#include "QuilloApp/Library/LibraryRows.h"
#include "QuilloCore/Concurrency/WorkerPool.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

using namespace std::chrono_literals;

StoredArtifact artifact(std::uint8_t number, std::string title, Date createdAt) {
  StoredArtifact stored;
  stored.manifest.id.bytes[15] = number;
  stored.manifest.title = std::move(title);
  stored.manifest.source.applicationName = "Editor";
  stored.manifest.createdAt = createdAt;
  stored.manifest.screenshotFilename = "screenshot.png";
  stored.bundlePath = "/library/" + std::to_string(number);
  return stored;
}

std::vector<std::string> titles(const std::vector<LibraryRow>& rows) {
  std::vector<std::string> texts;
  for (const LibraryRow& row : rows) texts.push_back((row.isDay() ? "# " : "") + row.title.toStdString());
  return texts;
}

std::vector<LibraryRow> rowsOfLibrary(std::vector<StoredArtifact> artifacts, LibraryCondition condition = {},
                                      std::string query = {}) {
  QuilloModelState state;
  state.artifacts = std::move(artifacts);
  state.libraryCondition = std::move(condition);
  state.searchQuery = std::move(query);
  std::vector<std::size_t> shown(state.artifacts.size());
  std::iota(shown.begin(), shown.end(), std::size_t{0});
  return libraryRows(state, shown, QDate(2026, 11, 21), QLocale::c());
}

Date localNoon(int year, int month, int day) {
  const QDateTime noon(QDate(year, month, day), QTime(12, 0));
  return Date(std::chrono::milliseconds(noon.toMSecsSinceEpoch()));
}

TEST(LibraryRows, standUnderTheirDayInTheReadersOwnTime) {
  const std::vector<StoredArtifact> artifacts{
      artifact(1, "new\nest", localNoon(2026, 11, 21)), artifact(2, "same day", localNoon(2026, 11, 21) - 2h),
      artifact(3, "day before", localNoon(2026, 11, 20)), artifact(4, "this year", localNoon(2026, 3, 2)),
      artifact(5, "another year", localNoon(2025, 11, 21))};
  const auto rows = rowsOfLibrary(artifacts);
  EXPECT_EQ((std::vector<std::string>{"# Today", "new est", "same day", "# Yesterday", "day before",
                                      "# Monday, 2 March", "this year", "# Friday, 21 November 2025", "another year"}),
            titles(rows));
  EXPECT_EQ("/library/1/screenshot.png", rows[1].screenshotPath.toStdString());
  EXPECT_TRUE(rowsOfLibrary({}).empty());
}

TEST(LibraryRows, showDamageWhereItWasSeenAndWhatIsPartial) {
  const std::vector<StoredArtifact> artifacts{artifact(1, "today", localNoon(2026, 11, 21)),
                                              artifact(2, "earlier", localNoon(2026, 11, 19))};
  LibraryCondition condition;
  condition.damagedBundles = {{artifact(3, "", {}).manifest.id, "/library/3", "old\nreason", localNoon(2026, 11, 1)},
                              {artifact(4, "", {}).manifest.id, "/library/4", "reason", localNoon(2026, 11, 20)}};
  condition.artifacts[artifacts[0].manifest.id] = {ArtifactCondition::Kind::partial, {}};
  condition.artifacts[artifacts[1].manifest.id] = {ArtifactCondition::Kind::damaged, "missing: screenshot.png"};
  const auto rows = rowsOfLibrary(artifacts, condition);
  EXPECT_EQ((std::vector<std::string>{"# Today", "today", "# Yesterday", "Damaged capture", "# Thursday, 19 November",
                                      "earlier", "# Sunday, 1 November", "Damaged capture"}),
            titles(rows));
  EXPECT_EQ(CaptureCondition::partial, rows[1].condition);
  EXPECT_EQ(CaptureCondition::damaged, rows[3].condition);
  EXPECT_EQ(CaptureCondition::damaged, rows[5].condition);
  EXPECT_EQ("old reason", rows[7].application.toStdString());
  EXPECT_EQ(4U, rowsOfLibrary(artifacts, condition, "e").size()) << "damage is not what was searched for";
}

class ArtifactListTest : public testing::Test {
 protected:
  static std::vector<LibraryRow> rowsOf(const std::vector<int>& numbers) {
    std::vector<StoredArtifact> artifacts;
    for (const int number : numbers)
      artifacts.push_back(artifact(static_cast<std::uint8_t>(number), std::to_string(number), localNoon(2026, 11, 21)));
    return rowsOfLibrary(artifacts);
  }

  OffscreenApplication application_;
  MainLoop loop_;
  WorkerPool workers_;
  QtThumbnailDecoder decoder_;
  ArtifactThumbnailCache cache_{decoder_, workers_};
  TaskGroup tasks_{loop_.executor()};
  Thumbnails thumbnails_{cache_, tasks_};
};

TEST_F(ArtifactListTest, tellsTheViewOnlyWhatDiffers) {
  ArtifactListModel model(thumbnails_);
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
  QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
  QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
  QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
  struct Step {
    std::vector<int> numbers;
    int insertions, removals;
  };
  const std::vector<Step> steps{{{1, 2, 3}, 1, 0}, {{9, 1, 2, 3}, 1, 0}, {{9, 1, 3}, 0, 1}, {{9, 1, 3}, 0, 0},
                                {{3, 1, 9}, 1, 1}, {{}, 0, 1},           {{5}, 1, 0}};
  for (const Step& step : steps) {
    inserted.clear();
    removed.clear();
    const auto rows = rowsOf(step.numbers);
    model.setRows(rows);
    EXPECT_EQ(step.insertions, inserted.count());
    EXPECT_EQ(step.removals, removed.count());
    ASSERT_EQ(static_cast<int>(rows.size()), model.rowCount());
    for (std::size_t row = 0; row < rows.size(); ++row)
      EXPECT_EQ(rows[row].title, model.index(static_cast<int>(row)).data().toString());
  }
  EXPECT_EQ(0, reset.count());

  changed.clear();
  auto renamed = rowsOf({5});
  renamed[1].title = QStringLiteral("renamed");
  model.setRows(renamed);
  EXPECT_EQ(1, changed.count());
  EXPECT_EQ("renamed, Editor, 12:00:00, complete",
            model.index(1).data(Qt::AccessibleTextRole).toString().toStdString());
  EXPECT_EQ(1, model.indexOf(*renamed[1].id).row());
  EXPECT_FALSE(model.flags(model.index(0)).testFlag(Qt::ItemIsSelectable)) << "a day is no capture";
}

TEST_F(ArtifactListTest, aPictureIsDecodedElsewhereAndThenThere) {
  const TemporaryDirectory directory;
  const QString path = QString::fromStdString((directory.path() / "wide.png").string());
  QImage picture(400, 100, QImage::Format_RGB32);
  picture.fill(QColor(10, 200, 30));
  ASSERT_TRUE(picture.save(path));
  const QString broken = QString::fromStdString((directory.path() / "broken.png").string());
  ASSERT_TRUE(QFile(path).copy(broken));
  ASSERT_TRUE(QFile::resize(broken, 20));

  QSignalSpy loaded(&thumbnails_, &Thumbnails::loaded);
  EXPECT_TRUE(thumbnails_.image(path, 200).isNull()) << "not on this thread";
  EXPECT_TRUE(thumbnails_.image(path, 200).isNull());
  EXPECT_TRUE(thumbnails_.image(broken, 200).isNull());
  ASSERT_TRUE(loop_.runUntil([&] { return tasks_.isEmpty(); }, 10s));
  EXPECT_EQ(1, loaded.count());
  EXPECT_EQ(QSize(200, 50), thumbnails_.image(path, 200).size());
  EXPECT_EQ(QColor(10, 200, 30), thumbnails_.image(path, 200).pixelColor(100, 25));
  EXPECT_TRUE(thumbnails_.image(broken, 200).isNull());
  EXPECT_TRUE(thumbnails_.image(path, 5000).isNull());
  ASSERT_TRUE(loop_.runUntil([&] { return tasks_.isEmpty(); }, 10s));
  EXPECT_EQ(QSize(400, 100), thumbnails_.image(path, 5000).size()) << "never blown up";
}

}  // namespace
}  // namespace quillo::test
