#include "platform/notification_center.h"
#include "platform/user_defaults.h"
#include "prefs/prefs_view_controller.h"
#include "prefs/stored_lists.h"
#include "support/test_support.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

QStringList items(const QComboBox* popup) {
  QStringList titles;
  for (int i = 0; i < popup->count(); ++i) titles << popup->itemText(i);
  return titles;
}

void choose(QComboBox* popup, int index) {
  popup->setCurrentIndex(index);
  emit popup->activated(index);
}

class PrefsTest : public testing::Test {
 protected:
  void SetUp() override { test::clearUserDefaults(); }
};

TEST_F(PrefsTest, EmptyListsShowOnlyNewSelectedWithItsTitle) {
  PrefsViewController prefs;
  for (auto [popup, box] : {std::pair{prefs.processPopup, prefs.processTextbox}, std::pair{prefs.filterPopup, prefs.filterTextbox},
                            std::pair{prefs.stylePopup, prefs.styleTextbox}}) {
    EXPECT_EQ(items(popup), QStringList{QStringLiteral("New\u2026")});
    EXPECT_EQ(popup->currentIndex(), 0);
    EXPECT_EQ(box->text(), QStringLiteral("New\u2026"));
  }
  EXPECT_TRUE(prefs.theProcsChanged && prefs.theFiltersChanged && prefs.theStylesChanged);
}

TEST_F(PrefsTest, ChoosingNewGivesThePlaceholderAndAddAddsIt) {
  PrefsViewController prefs;
  choose(prefs.processPopup, 0);
  // Index 0 is also the last item here: the placeholder wins.
  EXPECT_EQ(prefs.processTextbox->text(), QStringLiteral("enter process here"));
  prefs.button(QStringLiteral("process"), QStringLiteral("Add"))->click();
  EXPECT_EQ(prefs.theExtraProcs, QStringList{QStringLiteral("enter process here")});
  EXPECT_EQ(items(prefs.processPopup), (QStringList{"enter process here", "New\u2026"}));
  choose(prefs.filterPopup, 0);
  EXPECT_EQ(prefs.filterTextbox->text(), QStringLiteral("enter filter here"));
  choose(prefs.stylePopup, 0);
  EXPECT_EQ(prefs.styleTextbox->text(), QStringLiteral("enter style here"));
}

TEST_F(PrefsTest, ChoosingSecondEntryFillsTheBoxFirstEntryLeavesIt) {
  UserDefaults::standard().setStringArray(kExtraStylesKey, {QStringLiteral("A"), QStringLiteral("B")});
  PrefsViewController prefs;
  EXPECT_EQ(prefs.styleTextbox->text(), QStringLiteral("A"));
  choose(prefs.stylePopup, 1);
  EXPECT_EQ(prefs.styleTextbox->text(), QStringLiteral("B"));
  choose(prefs.stylePopup, 0);
  EXPECT_EQ(prefs.styleTextbox->text(), QStringLiteral("B"));
}

TEST_F(PrefsTest, ChangeWithNewSelectedDoesNothingAddAppends) {
  UserDefaults::standard().setStringArray(kExtraFiltersKey, {QStringLiteral("A")});
  PrefsViewController prefs;
  choose(prefs.filterPopup, 1);
  prefs.filterTextbox->setText(QStringLiteral("C"));
  prefs.button(QStringLiteral("filter"), QStringLiteral("Change"))->click();
  EXPECT_EQ(prefs.theExtraFilters, QStringList{QStringLiteral("A")});
  prefs.button(QStringLiteral("filter"), QStringLiteral("Add"))->click();
  EXPECT_EQ(prefs.theExtraFilters, (QStringList{"A", "C"}));
  choose(prefs.filterPopup, 0);
  prefs.filterTextbox->setText(QStringLiteral("Z"));
  prefs.button(QStringLiteral("filter"), QStringLiteral("Change"))->click();
  EXPECT_EQ(prefs.theExtraFilters, (QStringList{"Z", "C"}));
  EXPECT_EQ(prefs.filterPopup->currentIndex(), 0);
}

TEST_F(PrefsTest, RemovingTheSelectedLastEntrySelectsTheFirst) {
  UserDefaults::standard().setStringArray(kExtraProcsKey, {QStringLiteral("A"), QStringLiteral("B")});
  PrefsViewController prefs;
  choose(prefs.processPopup, 1);
  prefs.button(QStringLiteral("process"), QStringLiteral("Remove"))->click();
  EXPECT_EQ(prefs.theExtraProcs, QStringList{QStringLiteral("A")});
  EXPECT_EQ(prefs.processPopup->currentIndex(), 0);
  EXPECT_EQ(prefs.processTextbox->text(), QStringLiteral("A"));
}

TEST_F(PrefsTest, EmptyTextBoxMakesAddChangeRemoveDoNothing) {
  UserDefaults::standard().setStringArray(kExtraProcsKey, {QStringLiteral("A")});
  PrefsViewController prefs;
  prefs.processTextbox->clear();
  for (const char* action : {"Add", "Change", "Remove"}) prefs.button(QStringLiteral("process"), QString::fromLatin1(action))->click();
  EXPECT_EQ(prefs.theExtraProcs, QStringList{QStringLiteral("A")});
}

TEST_F(PrefsTest, ClosingWithoutEditsStoresAndAnnouncesAllThreeInOrder) {
  QObject listener;
  QStringList heard;
  for (const QString& name : {kProcsChanged, kFiltersChanged, kStylesChanged}) {
    NotificationCenter::defaultCenter().addObserver(&listener, name, [&](const QString& n) { heard << n; });
  }
  PrefsViewController prefs;
  prefs.findChild<QPushButton*>(QStringLiteral("closeButton"))->click();
  EXPECT_EQ(heard, (QStringList{"Procs-Changed", "Filters-Changed", "Styles-Changed"}));
  for (const QString& key : {kExtraProcsKey, kExtraFiltersKey, kExtraStylesKey}) {
    auto stored = UserDefaults::standard().stringArray(key);
    ASSERT_TRUE(stored) << key.toStdString();
    EXPECT_TRUE(stored->isEmpty());
  }
}

TEST_F(PrefsTest, EditsReachTheDefaultsOnlyOnClose) {
  PrefsViewController prefs;
  prefs.styleTextbox->setText(QStringLiteral("0h 9 4g 10"));
  prefs.styleAdd();
  EXPECT_FALSE(UserDefaults::standard().stringArray(kExtraStylesKey));
  prefs.closeButton();
  EXPECT_EQ(*UserDefaults::standard().stringArray(kExtraStylesKey), QStringList{QStringLiteral("0h 9 4g 10")});
}

}  // namespace
}  // namespace tarnbeck
