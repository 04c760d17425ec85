#include "platform/user_defaults.h"
#include "support/test_support.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

class UserDefaultsTest : public testing::Test {
 protected:
  void SetUp() override { test::clearUserDefaults(); }
  UserDefaults& defaults = UserDefaults::standard();

  // Reads back through a fresh store over the same file, as the next run of the app would.
  void reopen() {
    defaults.synchronize();
    UserDefaults::useLocation(folder_.path());
  }
  void useOwnFolder() { UserDefaults::useLocation(folder_.path()); }
  QTemporaryDir folder_;
};

TEST_F(UserDefaultsTest, AbsentKeyIsNothing) {
  EXPECT_FALSE(defaults.stringArray(QStringLiteral("ExtraProcs")));
  EXPECT_FALSE(defaults.dictionary(QStringLiteral("ExtraProcs")));
}

TEST_F(UserDefaultsTest, StringListsOfEveryLengthRoundTrip) {
  useOwnFolder();
  const QList<QStringList> shapes = {
      {},
      {QStringLiteral("kernel")},
      {QStringLiteral("a, b")},
      {QString()},
      {QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("two")},
      {QStringLiteral("\u00AE^com\\."), QStringLiteral("0h 9 4g 10"), QStringLiteral("@at"), QStringLiteral("42")},
  };
  for (const QStringList& shape : shapes) {
    defaults.setStringArray(QStringLiteral("ExtraFilters"), shape);
    reopen();
    auto back = UserDefaults::standard().stringArray(QStringLiteral("ExtraFilters"));
    ASSERT_TRUE(back) << shape.join(u'|').toStdString();
    EXPECT_EQ(*back, shape) << shape.join(u'|').toStdString();
  }
  test::isolateUserDefaults();
}

TEST_F(UserDefaultsTest, RememberedPeriodDictionaryKeepsItsTypes) {
  useOwnFolder();
  const QString key = QStringLiteral("6F9619FF-8B86-D011-B42D-00C04FC964FF");
  defaults.setDictionary(key, {{QStringLiteral("file"), QStringLiteral("Persist/0000000000000001.tracev3")},
                               {QStringLiteral("start"), 541829167.123},
                               {QStringLiteral("end"), 541829200.5}});
  reopen();
  auto back = UserDefaults::standard().dictionary(key);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->value(QStringLiteral("file")).typeId(), QMetaType::QString);
  EXPECT_EQ(back->value(QStringLiteral("start")).typeId(), QMetaType::Double);
  EXPECT_DOUBLE_EQ(back->value(QStringLiteral("start")).toDouble(), 541829167.123);
  EXPECT_DOUBLE_EQ(back->value(QStringLiteral("end")).toDouble(), 541829200.5);
  test::isolateUserDefaults();
}

TEST_F(UserDefaultsTest, WholeContentAndRemoval) {
  defaults.setStringArray(QStringLiteral("ExtraProcs"), {QStringLiteral("kernel")});
  defaults.setDictionary(QStringLiteral("A-KEY"), {{QStringLiteral("file"), QString()}});
  QVariantMap all = defaults.dictionaryRepresentation();
  EXPECT_EQ(all.value(QStringLiteral("ExtraProcs")).toStringList(), QStringList{QStringLiteral("kernel")});
  EXPECT_EQ(all.value(QStringLiteral("A-KEY")).typeId(), QMetaType::QVariantMap);
  defaults.removeObject(QStringLiteral("A-KEY"));
  EXPECT_FALSE(defaults.dictionaryRepresentation().contains(QStringLiteral("A-KEY")));
  EXPECT_TRUE(defaults.contains(QStringLiteral("ExtraProcs")));
}

TEST_F(UserDefaultsTest, ADictionaryIsNotAList) {
  defaults.setDictionary(QStringLiteral("ExtraStyles"), {{QStringLiteral("x"), 1}});
  EXPECT_FALSE(defaults.stringArray(QStringLiteral("ExtraStyles")));
}

}  // namespace
}  // namespace tarnbeck
