#pragma once
// The preferences panel: the user's extra processes, filters and styles, one section each
// (a menu of the entries plus "New…", a text box, Add, Change and Remove). Closing it
// stores every list it has touched and announces each one.
#include <QDialog>
#include <QStringList>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tarnbeck {

class PrefsViewController : public QDialog {
  Q_OBJECT
 public:
  explicit PrefsViewController(QWidget* parent = nullptr);

  // Working copies of the stored lists.
  QStringList theExtraProcs;
  QStringList theExtraFilters;
  QStringList theExtraStyles;
  const QString theNewPred = QStringLiteral("New\u2026");
  bool theProcsChanged = false;
  bool theFiltersChanged = false;
  bool theStylesChanged = false;

  QComboBox* processPopup = nullptr;
  QComboBox* stylePopup = nullptr;
  QComboBox* filterPopup = nullptr;
  QLineEdit* processTextbox = nullptr;
  QLineEdit* styleTextbox = nullptr;
  QLineEdit* filterTextbox = nullptr;

  void viewDidLoad();

  void processActPopup();
  void processAdd();
  void processChange();
  void processRemove();
  void rebuildProcessMenu();

  void styleActPopup();
  void styleAdd();
  void styleChange();
  void styleRemove();
  void rebuildStyleMenu();

  void filterActPopup();
  void filterAdd();
  void filterChange();
  void filterRemove();
  void rebuildFilterMenu();

  void closeButton();

  // The section buttons, for tests and keyboard users.
  QPushButton* button(const QString& section, const QString& action) const;

 private:
  struct Section {
    QComboBox* popup;
    QLineEdit* textbox;
    QStringList* list;
    bool* changed;
    QString placeholder;
  };
  Section processSection();
  Section filterSection();
  Section styleSection();

  static void actPopup(const Section& section);
  static void add(const Section& section, void (PrefsViewController::*rebuild)(), PrefsViewController* self);
  static void change(const Section& section, void (PrefsViewController::*rebuild)(), PrefsViewController* self);
  static void remove(const Section& section, void (PrefsViewController::*rebuild)(), PrefsViewController* self);
  void rebuild(const Section& section);
  QLabel* hint(const QString& text);
  QWidget* buildSection(const QString& title, const QString& name, QComboBox*& popup, QLineEdit*& textbox,
                        void (PrefsViewController::*act)(), void (PrefsViewController::*addAction)(),
                        void (PrefsViewController::*changeAction)(), void (PrefsViewController::*removeAction)());
};

}  // namespace tarnbeck
