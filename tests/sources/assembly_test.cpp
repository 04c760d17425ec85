#include "platform/property_list.h"
#include "sources/assembly.h"
#include "sources/save_text.h"
#include "support/test_support.h"
#include "tools/sample_writer.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

QStringList entries(const QString& folder) {
  QStringList names = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
  return names;
}

class AssemblyTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(sample::writeSampleStore(store())); }
  QString store() const { return dir.filePath(QStringLiteral("store")); }
  QString bundle(const char* name = "Made.logarchive") const { return dir.filePath(QString::fromLatin1(name)); }
  QTemporaryDir dir;
};

TEST_F(AssemblyTest, BundleLayoutHoldsUuidtextContentsBesideTheStoreFolders) {
  EXPECT_FALSE(copyToLogarchive(store(), bundle()));
  EXPECT_FALSE(makeInfoFile(bundle()));
  EXPECT_EQ(entries(bundle()), (QStringList{"00", "Extra", "Info.plist", "Persist", "Special", "dsc", "timesync"}));
  EXPECT_EQ(entries(bundle() + QStringLiteral("/Extra")),
            (QStringList{"logdata.statistics.0.txt", "shutdown.log", "version.plist"}));
  EXPECT_EQ(test::readFile(bundle() + QStringLiteral("/Persist/0000000000000001.tracev3")), QByteArray(4096, 'p'));
  // Copies keep their modification times, as the catalogue of the new bundle shows them.
  EXPECT_EQ(QFileInfo(bundle() + QStringLiteral("/Persist/0000000000000001.tracev3")).lastModified().toSecsSinceEpoch(),
            1550620800 + 600);
}

TEST_F(AssemblyTest, OtherDiagnosticsFoldersAreNotCopied) {
  copyToLogarchive(store(), bundle());
  EXPECT_FALSE(QFileInfo::exists(bundle() + QStringLiteral("/HighVolume")));
  EXPECT_FALSE(QFileInfo::exists(bundle() + QStringLiteral("/Extra/HighVolume")));
}

TEST_F(AssemblyTest, InfoPlistHasSevenKeysOfTheirTypes) {
  copyToLogarchive(store(), bundle());
  ASSERT_FALSE(makeInfoFile(bundle()));
  const QByteArray xml = test::readFile(bundle() + QStringLiteral("/Info.plist"));
  EXPECT_TRUE(xml.contains("<key>OSArchiveVersion</key>\n\t<integer>3</integer>"));
  EXPECT_TRUE(xml.contains("<key>OSLoggingSupportVersion</key>\n\t<real>518.7"));
  auto info = readPlistDictionary(bundle() + QStringLiteral("/Info.plist"));
  ASSERT_TRUE(info);
  EXPECT_EQ(info->keys(), (QStringList{"EndTimeRef", "LiveMetadata", "OSArchiveVersion", "OSLoggingSupportProject",
                                       "OSLoggingSupportVersion", "PersistMetadata", "SpecialMetadata"}));
  EXPECT_EQ(info->value(QStringLiteral("OSLoggingSupportProject")).toString(), QStringLiteral("libtrace-518.70.1"));
  const QVariantMap end = info->value(QStringLiteral("EndTimeRef")).toMap();
  EXPECT_EQ(end.value(QStringLiteral("ContinuousTime")).typeId(), QMetaType::ULongLong);
  EXPECT_EQ(end.value(QStringLiteral("UUID")).toString(), end.value(QStringLiteral("UUID")).toString().toUpper());
  EXPECT_EQ(end.value(QStringLiteral("UUID")).toString().size(), 36);
  for (const char* key : {"LiveMetadata", "PersistMetadata", "SpecialMetadata"}) {
    EXPECT_EQ(info->value(QString::fromLatin1(key)).toMap().value(QStringLiteral("OldestTimeRef")).toMap(), end) << key;
  }
  const QVariantMap ttl = info->value(QStringLiteral("SpecialMetadata")).toMap().value(QStringLiteral("TTL")).toMap();
  EXPECT_EQ(ttl.keys(), (QStringList{"Identifier", "ttl01"}));
}

TEST_F(AssemblyTest, TwoBundlesDifferOnlyInUuidAndTick) {
  copyToLogarchive(store(), bundle("One.logarchive"));
  makeInfoFile(bundle("One.logarchive"));
  copyToLogarchive(store(), bundle("Two.logarchive"));
  makeInfoFile(bundle("Two.logarchive"));
  QVariantMap one = *readPlistDictionary(bundle("One.logarchive") + QStringLiteral("/Info.plist"));
  QVariantMap two = *readPlistDictionary(bundle("Two.logarchive") + QStringLiteral("/Info.plist"));
  auto strip = [](QVariantMap info) {
    const QVariantMap ref = info.value(QStringLiteral("EndTimeRef")).toMap();
    EXPECT_EQ(ref.size(), 2);
    info.remove(QStringLiteral("EndTimeRef"));
    for (const char* key : {"LiveMetadata", "PersistMetadata", "SpecialMetadata"}) {
      QVariantMap inner = info.value(QString::fromLatin1(key)).toMap();
      inner.remove(QStringLiteral("OldestTimeRef"));
      info.insert(QString::fromLatin1(key), inner);
    }
    return std::make_pair(info, ref);
  };
  auto [restOne, refOne] = strip(one);
  auto [restTwo, refTwo] = strip(two);
  EXPECT_EQ(restOne, restTwo);
  EXPECT_NE(refOne.value(QStringLiteral("UUID")), refTwo.value(QStringLiteral("UUID")));
  EXPECT_LT(refOne.value(QStringLiteral("ContinuousTime")).toULongLong(), refTwo.value(QStringLiteral("ContinuousTime")).toULongLong());
}

TEST(InfoDictionary, EmptyOrVersionOnlyGivesEmptyTtl) {
  const QVariantMap empty = infoDictionary({}, 1, QStringLiteral("U"));
  EXPECT_TRUE(empty.value(QStringLiteral("SpecialMetadata")).toMap().value(QStringLiteral("TTL")).toMap().isEmpty());
  const QVariantMap versionOnly = infoDictionary({{QStringLiteral("Version"), 7}}, 1, QStringLiteral("U"));
  EXPECT_TRUE(versionOnly.value(QStringLiteral("SpecialMetadata")).toMap().value(QStringLiteral("TTL")).toMap().isEmpty());
  EXPECT_EQ(versionOnly.size(), 7);
}

TEST_F(AssemblyTest, ExistingDestinationStopsAtTheFirstCopy) {
  QDir().mkpath(bundle());
  auto failure = copyToLogarchive(store(), bundle());
  ASSERT_TRUE(failure);
  EXPECT_TRUE(failure->contains(QStringLiteral("already exists"))) << failure->toStdString();
  EXPECT_FALSE(QFileInfo::exists(bundle() + QStringLiteral("/Persist")));
}

TEST_F(AssemblyTest, MissingSpecialStopsTheCopying) {
  QDir(store() + QStringLiteral("/diagnostics/Special")).removeRecursively();
  auto failure = copyToLogarchive(store(), bundle());
  ASSERT_TRUE(failure);
  EXPECT_TRUE(failure->contains(QStringLiteral("Special")));
  EXPECT_TRUE(QFileInfo::exists(bundle() + QStringLiteral("/Persist")));
  EXPECT_FALSE(QFileInfo::exists(bundle() + QStringLiteral("/timesync")));
}

TEST(AssemblyLines, SourceHasASpaceDestinationHasNone) {
  EXPECT_EQ(sourceLine(QStringLiteral("/var/db")), QStringLiteral("Source: /var/db\n"));
  EXPECT_EQ(destinationLine(QStringLiteral("/tmp/x.logarchive")), QStringLiteral("Destination:/tmp/x.logarchive\n"));
}

TEST(AssemblyDeathTest, MissingVersionPlistStopsWithAMessage) {
  QTemporaryDir dir;
  QDir().mkpath(dir.filePath(QStringLiteral("B.logarchive/Extra")));
  EXPECT_DEATH(makeInfoFile(dir.filePath(QStringLiteral("B.logarchive"))), "version.plist");
}

TEST(SaveText, WritesUtf8AndReplaces) {
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("out.txt"));
  test::writeFile(path, "old content that is longer");
  EXPECT_FALSE(saveOutputText(path, QStringLiteral("caf\u00E9\nline\n")));
  EXPECT_EQ(test::readFile(path), QByteArray("caf\xc3\xa9\nline\n"));
  EXPECT_FALSE(saveOutputText(path, QString()));
  EXPECT_EQ(test::readFile(path), QByteArray());
}

TEST(SaveText, FailureGivesTheMessage) {
  auto failure = saveOutputText(QStringLiteral("/nonexistent/folder/out.txt"), QStringLiteral("x"));
  ASSERT_TRUE(failure);
  EXPECT_EQ(*failure, QStringLiteral("The folder \u201Cfolder\u201D doesn\u2019t exist."));
}

}  // namespace
}  // namespace tarnbeck
