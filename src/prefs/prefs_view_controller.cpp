#include "prefs/prefs_view_controller.h"

#include "platform/notification_center.h"
#include "platform/user_defaults.h"
#include "prefs/stored_lists.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tarnbeck {

PrefsViewController::PrefsViewController(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("prefsViewController"));
  setWindowTitle(tr("Preferences"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(buildSection(tr("Extra processes"), QStringLiteral("process"), processPopup, processTextbox,
                                 &PrefsViewController::processActPopup, &PrefsViewController::processAdd,
                                 &PrefsViewController::processChange, &PrefsViewController::processRemove));
  layout->addWidget(buildSection(tr("Filters"), QStringLiteral("filter"), filterPopup, filterTextbox,
                                 &PrefsViewController::filterActPopup, &PrefsViewController::filterAdd,
                                 &PrefsViewController::filterChange, &PrefsViewController::filterRemove));
  layout->addWidget(hint(tr("A text the message must contain (any case), or \u00AE followed by a regular expression.")));
  layout->addWidget(buildSection(tr("Styles"), QStringLiteral("style"), stylePopup, styleTextbox,
                                 &PrefsViewController::styleActPopup, &PrefsViewController::styleAdd,
                                 &PrefsViewController::styleChange, &PrefsViewController::styleRemove));
  layout->addWidget(hint(tr("Field numbers 0 to 15 separated by spaces, each with letters: h time of day, d date and "
                            "time (field 0); t first 21, T last 20 characters, f file name; r, g, b colour. "
                            "Example: 0h 9 4g 10")));
  auto* close = new QPushButton(tr("Close"), this);
  close->setObjectName(QStringLiteral("closeButton"));
  close->setDefault(false);
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &PrefsViewController::closeButton);
  auto* closeRow = new QHBoxLayout;
  closeRow->addStretch();
  closeRow->addWidget(close);
  layout->addLayout(closeRow);
  viewDidLoad();
}

QWidget* PrefsViewController::buildSection(const QString& title, const QString& name, QComboBox*& popup,
                                           QLineEdit*& textbox, void (PrefsViewController::*act)(),
                                           void (PrefsViewController::*addAction)(),
                                           void (PrefsViewController::*changeAction)(),
                                           void (PrefsViewController::*removeAction)()) {
  auto* box = new QGroupBox(title, this);
  auto* rows = new QVBoxLayout(box);
  popup = new QComboBox(box);
  popup->setObjectName(name + QStringLiteral("Popup"));
  popup->setMinimumWidth(320);
  connect(popup, &QComboBox::activated, this, act);
  textbox = new QLineEdit(box);
  textbox->setObjectName(name + QStringLiteral("Textbox"));
  auto* buttons = new QHBoxLayout;
  const std::pair<QString, void (PrefsViewController::*)()> actions[] = {
      {tr("Add"), addAction}, {tr("Change"), changeAction}, {tr("Remove"), removeAction}};
  for (const auto& [label, action] : actions) {
    auto* button = new QPushButton(label, box);
    button->setObjectName(name + label);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, action);
    buttons->addWidget(button);
  }
  buttons->addStretch();
  rows->addWidget(popup);
  rows->addWidget(textbox);
  rows->addLayout(buttons);
  return box;
}

QLabel* PrefsViewController::hint(const QString& text) {
  auto* label = new QLabel(text, this);
  label->setWordWrap(true);
  label->setMaximumWidth(420);
  QFont small = label->font();
  small.setPointSizeF(small.pointSizeF() * 0.9);
  label->setFont(small);
  return label;
}

QPushButton* PrefsViewController::button(const QString& section, const QString& action) const {
  return findChild<QPushButton*>(section + action);
}

PrefsViewController::Section PrefsViewController::processSection() {
  return {processPopup, processTextbox, &theExtraProcs, &theProcsChanged, QStringLiteral("enter process here")};
}
PrefsViewController::Section PrefsViewController::filterSection() {
  return {filterPopup, filterTextbox, &theExtraFilters, &theFiltersChanged, QStringLiteral("enter filter here")};
}
PrefsViewController::Section PrefsViewController::styleSection() {
  return {stylePopup, styleTextbox, &theExtraStyles, &theStylesChanged, QStringLiteral("enter style here")};
}

void PrefsViewController::viewDidLoad() {
  UserDefaults& defaults = UserDefaults::standard();
  if (auto stored = defaults.stringArray(kExtraProcsKey)) theExtraProcs = *stored;
  rebuildProcessMenu();
  if (auto stored = defaults.stringArray(kExtraFiltersKey)) theExtraFilters = *stored;
  rebuildFilterMenu();
  if (auto stored = defaults.stringArray(kExtraStylesKey)) theExtraStyles = *stored;
  rebuildStyleMenu();
}

void PrefsViewController::rebuild(const Section& section) {
  const int noted = section.popup->currentIndex();
  section.popup->clear();
  for (const QString& entry : *section.list) section.popup->addItem(entry);
  section.popup->addItem(theNewPred);
  section.popup->setCurrentIndex(noted >= 0 && noted < section.list->size() ? noted : 0);
  section.textbox->setText(section.popup->currentText());
  *section.changed = true;
}

void PrefsViewController::actPopup(const Section& section) {
  const int selected = section.popup->currentIndex();
  const int items = section.popup->count();
  if (selected >= 1 && selected < items - 1) {
    section.textbox->setText(section.list->at(selected));
  } else if (selected == items - 1) {
    section.textbox->setText(section.placeholder);
  }
  // The first entry leaves the text box as it is.
}

void PrefsViewController::add(const Section& section, void (PrefsViewController::*rebuildMenu)(), PrefsViewController* self) {
  const QString text = section.textbox->text();
  if (text.isEmpty()) return;
  section.list->append(text);
  (self->*rebuildMenu)();
}

void PrefsViewController::change(const Section& section, void (PrefsViewController::*rebuildMenu)(), PrefsViewController* self) {
  const QString text = section.textbox->text();
  const int selected = section.popup->currentIndex();
  if (text.isEmpty()) return;
  if (selected >= 0 && selected < section.list->size()) {
    (*section.list)[selected] = text;
    (self->*rebuildMenu)();
  }
}

void PrefsViewController::remove(const Section& section, void (PrefsViewController::*rebuildMenu)(), PrefsViewController* self) {
  const QString text = section.textbox->text();
  const int selected = section.popup->currentIndex();
  if (text.isEmpty()) return;
  if (selected >= 0 && selected < section.list->size()) {
    section.list->removeAt(selected);
    (self->*rebuildMenu)();
  }
}

void PrefsViewController::rebuildProcessMenu() { rebuild(processSection()); }
void PrefsViewController::rebuildFilterMenu() { rebuild(filterSection()); }
void PrefsViewController::rebuildStyleMenu() { rebuild(styleSection()); }

void PrefsViewController::processActPopup() { actPopup(processSection()); }
void PrefsViewController::processAdd() { add(processSection(), &PrefsViewController::rebuildProcessMenu, this); }
void PrefsViewController::processChange() { change(processSection(), &PrefsViewController::rebuildProcessMenu, this); }
void PrefsViewController::processRemove() { remove(processSection(), &PrefsViewController::rebuildProcessMenu, this); }

void PrefsViewController::filterActPopup() { actPopup(filterSection()); }
void PrefsViewController::filterAdd() { add(filterSection(), &PrefsViewController::rebuildFilterMenu, this); }
void PrefsViewController::filterChange() { change(filterSection(), &PrefsViewController::rebuildFilterMenu, this); }
void PrefsViewController::filterRemove() { remove(filterSection(), &PrefsViewController::rebuildFilterMenu, this); }

void PrefsViewController::styleActPopup() { actPopup(styleSection()); }
void PrefsViewController::styleAdd() { add(styleSection(), &PrefsViewController::rebuildStyleMenu, this); }
void PrefsViewController::styleChange() { change(styleSection(), &PrefsViewController::rebuildStyleMenu, this); }
void PrefsViewController::styleRemove() { remove(styleSection(), &PrefsViewController::rebuildStyleMenu, this); }

void PrefsViewController::closeButton() {
  UserDefaults& defaults = UserDefaults::standard();
  NotificationCenter& center = NotificationCenter::defaultCenter();
  if (theProcsChanged) {
    defaults.setStringArray(kExtraProcsKey, theExtraProcs);
    center.post(kProcsChanged);
  }
  if (theFiltersChanged) {
    defaults.setStringArray(kExtraFiltersKey, theExtraFilters);
    center.post(kFiltersChanged);
  }
  if (theStylesChanged) {
    defaults.setStringArray(kExtraStylesKey, theExtraStyles);
    center.post(kStylesChanged);
  }
  accept();
}

}  // namespace tarnbeck
