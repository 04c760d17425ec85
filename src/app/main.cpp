#include "app/app_delegate.h"
#include "app/document.h"
#include "app/tb_window.h"
#include "main_window/view_controller.h"

#include <QApplication>
#include <QFileInfo>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tarnbeck"));
  QApplication::setOrganizationName(QStringLiteral("Tarnbeck"));
  QApplication::setQuitOnLastWindowClosed(true);

  tarnbeck::AppDelegate delegate;
  tarnbeck::Document* first = delegate.newDocument();
  first->window()->show();
  delegate.applicationDidFinishLaunching();

  // A bundle named on the command line opens as if chosen in the Open panel.
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() > 1) first->window()->contentViewController()->openSource(QFileInfo(arguments.at(1)).absoluteFilePath());
  return QApplication::exec();
}
