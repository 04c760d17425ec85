// Remembered chart periods and the period menu.
#include "chart/chart_view.h"
#include "logquery/periods.h"
#include "main_window/view_controller.h"
#include "platform/notification_center.h"
#include "platform/user_defaults.h"

#include <QComboBox>

namespace tarnbeck {

void ViewController::insertDefaults(Date start, Date end) {
  if (theSourceLogFile.isEmpty()) return;
  UserDefaults::standard().setDictionary(theUUID, rememberedPeriod(theSourceLogFile, start, end));
  NotificationCenter::defaultCenter().post(kPeriodChanged);
}

QStringList ViewController::getPossibleTimes() const {
  return rememberedPeriodTitles(UserDefaults::standard().dictionaryRepresentation(), theSourceLogFile);
}

void ViewController::loadPeriodMenu() {
  const QString noted = periodPopup->currentText();
  rebuildMenu(periodPopup, QStringList{kVariablePeriodTitle} + getPossibleTimes());
  const int found = periodPopup->findText(noted, Qt::MatchExactly);
  periodPopup->setCurrentIndex(found >= 0 ? found : 0);
}

void ViewController::periodPopupAction() {
  if (sourceLogPopup->currentIndex() <= 0 || procsPopup->currentIndex() <= 0) return;
  if (periodPopup->currentIndex() == 0) {
    theChartView->setTopLevel();
  } else if (auto period = parsePeriodTitle(periodPopup->currentText())) {
    // Always 50 bars here, whatever the bar-count box shows.
    theChartView->chartDates(50, period->first, period->second, true);
  }
  clearHeldEntries();
}

}  // namespace tarnbeck
