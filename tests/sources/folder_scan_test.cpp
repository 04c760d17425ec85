#include "sources/folder_scan.h"
#include "support/test_support.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

constexpr qint64 kCreated = 1514862245;  // 2018-01-02 03:04:05 UTC

TEST(CatalogueLine, TheDocumentedExample) {
  EXPECT_EQ(catalogueLine(QStringLiteral("Persist/0000000000000001.tracev3"), kCreated * 1000, (kCreated + 9000) * 1000, 2048),
            QStringLiteral("Persist/0000000000000001.tracev3\t2018-01-02 03:04:05  2018-01-02 05:34:05  2048 bytes, period 150.0 min\n"));
}

TEST(CatalogueLine, PeriodsInTenthsOfAMinute) {
  auto period = [](qint64 seconds) {
    const QString line = catalogueLine(QStringLiteral("R"), kCreated * 1000, (kCreated + seconds) * 1000, 1);
    return line.section(QStringLiteral("period "), 1).section(u' ', 0, 0);
  };
  EXPECT_EQ(period(0), QStringLiteral("0.0"));
  EXPECT_EQ(period(90), QStringLiteral("1.5"));
  EXPECT_EQ(period(5), QStringLiteral("0.1"));
}

TEST(CatalogueLine, TimesAreUtcWhateverTheZone) {
  test::ScopedTimeZone zone("Asia/Tokyo");
  EXPECT_TRUE(catalogueLine(QStringLiteral("R"), kCreated * 1000, kCreated * 1000, 1).contains(QStringLiteral("2018-01-02 03:04:05  2018-01-02 03:04:05")));
}

class FolderScanTest : public testing::Test {
 protected:
  QString file(const QString& relative, int size = 10, qint64 modified = kCreated) {
    const QString path = dir.filePath(relative);
    test::writeFile(path, QByteArray(size, 'x'));
    test::setModificationTime(path, modified);
    return path;
  }
  QTemporaryDir dir;
  FolderScan scan;
};

TEST_F(FolderScanTest, UpperCaseExtensionAndFoldersAreNotCatalogued) {
  file(QStringLiteral("Persist/a.TRACEV3"));
  QDir().mkpath(dir.filePath(QStringLiteral("Persist/folder.tracev3")));
  file(QStringLiteral("Persist/b.tracev3"));
  file(QStringLiteral("Persist/notes.plist"));
  EXPECT_TRUE(scanFolder(dir.filePath(QStringLiteral("Persist")), QStringLiteral("Persist"), scan).isEmpty());
  EXPECT_EQ(scan.heldTracev3Files, QStringList{QStringLiteral("Persist/b.tracev3")});
}

TEST_F(FolderScanTest, TopLevelNameStartsWithASlash) {
  file(QStringLiteral("logdata.LiveData.tracev3"), 64);
  scanFolder(dir.path(), QString(), scan);
  EXPECT_EQ(scan.heldTracev3Files, QStringList{QStringLiteral("/logdata.LiveData.tracev3")});
  EXPECT_TRUE(scan.tracev3Array.first().startsWith(QStringLiteral("/logdata.LiveData.tracev3\t")));
  const HeldFileInfo info = scan.heldFileInfo.value(QStringLiteral("/logdata.LiveData.tracev3"));
  EXPECT_EQ(info.total, 64);
  EXPECT_EQ(info.date, QStringLiteral("2018-01-02"));
  EXPECT_EQ(info.time, QStringLiteral("03:04:05"));
}

TEST_F(FolderScanTest, CreationLaterThanModificationCountsAsModification) {
  // A file written now and given an old modification time: its birth time (if the file
  // system records one) is after the modification, so the period is 0.0.
  file(QStringLiteral("Special/x.tracev3"), 10, kCreated);
  scanFolder(dir.filePath(QStringLiteral("Special")), QStringLiteral("Special"), scan);
  EXPECT_EQ(scan.tracev3Array.first(),
            QStringLiteral("Special/x.tracev3\t2018-01-02 03:04:05  2018-01-02 03:04:05  10 bytes, period 0.0 min\n"));
}

TEST_F(FolderScanTest, BirthTimeBeforeModificationGivesThePeriod) {
  const qint64 now = QDateTime::currentSecsSinceEpoch();
  const QString path = file(QStringLiteral("Persist/y.tracev3"), 10, now + 90);
  if (!QFileInfo(path).birthTime().isValid()) GTEST_SKIP() << "this file system records no creation times";
  scanFolder(dir.filePath(QStringLiteral("Persist")), QStringLiteral("Persist"), scan);
  const QString minutes = scan.tracev3Array.first().section(QStringLiteral("period "), 1).section(u' ', 0, 0);
  EXPECT_NEAR(minutes.toDouble(), 1.5, 0.05);
}

TEST_F(FolderScanTest, ScanOrderIsByName) {
  file(QStringLiteral("Persist/0000000000000002.tracev3"));
  file(QStringLiteral("Persist/0000000000000001.tracev3"));
  file(QStringLiteral("Persist/000000000000000a.tracev3"));
  scanFolder(dir.filePath(QStringLiteral("Persist")), QStringLiteral("Persist"), scan);
  EXPECT_EQ(scan.heldTracev3Files, (QStringList{"Persist/0000000000000001.tracev3", "Persist/0000000000000002.tracev3",
                                                "Persist/000000000000000a.tracev3"}));
}

TEST_F(FolderScanTest, MissingFolderGivesItsMessage) {
  const QStringList messages = scanFolder(dir.filePath(QStringLiteral("Special")), QStringLiteral("Special"), scan);
  EXPECT_EQ(messages, QStringList{QStringLiteral("The folder \u201CSpecial\u201D doesn\u2019t exist.")});
}

TEST_F(FolderScanTest, VanishedEntryIsReported) {
  auto message = getTracev3(dir.filePath(QStringLiteral("Persist/gone.tracev3")), QStringLiteral("Persist"), scan);
  ASSERT_TRUE(message);
  EXPECT_TRUE(message->contains(QStringLiteral("gone.tracev3")));
  EXPECT_TRUE(scan.heldTracev3Files.isEmpty());
}

}  // namespace
}  // namespace tarnbeck
