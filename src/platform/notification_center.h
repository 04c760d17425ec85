#pragma once
// Named notifications ("Procs-Changed", "Period-Changed", ...), posted and delivered
// synchronously on the posting thread, from any sender to every observer of the name.
#include <QObject>
#include <QString>

#include <functional>
#include <vector>

namespace tarnbeck {

class NotificationCenter {
 public:
  using Handler = std::function<void(const QString& name)>;

  static NotificationCenter& defaultCenter();

  // Registers a handler for the name. The registration ends when the observer object is
  // destroyed (a closed window's controller no longer hears anything).
  void addObserver(QObject* observer, const QString& name, Handler handler);
  void removeObserver(QObject* observer);

  // Delivers to every observer of the name, in the order they registered, before returning.
  void post(const QString& name);

 private:
  struct Registration {
    QObject* observer;
    QString name;
    std::shared_ptr<Handler> handler;
  };
  std::vector<Registration> registrations_;
};

}  // namespace tarnbeck
