#include "platform/property_list.h"
#include "support/test_support.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

TEST(PropertyList, XmlRoundTripKeepsTypes) {
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("Info.plist"));
  const QVariantMap inner{{QStringLiteral("ContinuousTime"), QVariant::fromValue<quint64>(18446744073709551615ULL)},
                          {QStringLiteral("UUID"), QStringLiteral("6F9619FF-8B86-D011-B42D-00C04FC964FF")}};
  const QVariantMap written{{QStringLiteral("OSArchiveVersion"), QVariant::fromValue<qint64>(3)},
                            {QStringLiteral("OSLoggingSupportVersion"), 518.7},
                            {QStringLiteral("EndTimeRef"), inner},
                            {QStringLiteral("Empty"), QVariantMap()}};
  ASSERT_TRUE(writeXmlPlist(path, written));
  EXPECT_TRUE(test::readFile(path).startsWith("<?xml"));
  auto back = readPlistDictionary(path);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->value(QStringLiteral("OSArchiveVersion")).toULongLong(), 3u);
  EXPECT_EQ(back->value(QStringLiteral("OSLoggingSupportVersion")).typeId(), QMetaType::Double);
  EXPECT_DOUBLE_EQ(back->value(QStringLiteral("OSLoggingSupportVersion")).toDouble(), 518.7);
  const QVariantMap innerBack = back->value(QStringLiteral("EndTimeRef")).toMap();
  EXPECT_EQ(innerBack.value(QStringLiteral("ContinuousTime")).toULongLong(), 18446744073709551615ULL);
  EXPECT_EQ(innerBack.value(QStringLiteral("UUID")).toString(), inner.value(QStringLiteral("UUID")).toString());
  EXPECT_TRUE(back->value(QStringLiteral("Empty")).toMap().isEmpty());
}

TEST(PropertyList, MissingOrBrokenFileIsNothing) {
  QTemporaryDir dir;
  EXPECT_FALSE(readPlistDictionary(dir.filePath(QStringLiteral("absent.plist"))));
  test::writeFile(dir.filePath(QStringLiteral("broken.plist")), "not a property list");
  EXPECT_FALSE(readPlistDictionary(dir.filePath(QStringLiteral("broken.plist"))));
}

TEST(PropertyList, ReadsRealBinaryVersionPlist) {
  auto path = test::realDataPath(QStringLiteral("iquiz_2019_logarchive/Extra/version.plist"));
  if (!path) GTEST_SKIP() << "real samples not present";
  EXPECT_TRUE(test::readFile(*path).startsWith("bplist00"));
  auto version = readPlistDictionary(*path);
  ASSERT_TRUE(version);
  EXPECT_EQ(version->value(QStringLiteral("Version")).toULongLong(), 7u);
  EXPECT_TRUE(version->contains(QStringLiteral("Identifier")));
  EXPECT_TRUE(version->value(QStringLiteral("ttl01")).toMap().contains(QStringLiteral("ContinuousTime")));
}

TEST(PropertyList, ReadsRealXmlInfoPlist) {
  auto path = test::realDataPath(QStringLiteral("iquiz_2019_logarchive/Info.plist"));
  if (!path) GTEST_SKIP() << "real samples not present";
  auto info = readPlistDictionary(*path);
  ASSERT_TRUE(info);
  EXPECT_EQ(info->value(QStringLiteral("OSArchiveVersion")).toULongLong(), 3u);
  EXPECT_EQ(info->value(QStringLiteral("OSLoggingSupportProject")).toString(), QStringLiteral("libtrace-829.70.1"));
}

}  // namespace
}  // namespace tarnbeck
