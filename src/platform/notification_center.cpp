#include "platform/notification_center.h"

#include <algorithm>

namespace tarnbeck {

NotificationCenter& NotificationCenter::defaultCenter() {
  static NotificationCenter center;
  return center;
}

void NotificationCenter::addObserver(QObject* observer, const QString& name, Handler handler) {
  const bool known = std::any_of(registrations_.begin(), registrations_.end(),
                                 [observer](const Registration& r) { return r.observer == observer; });
  registrations_.push_back({observer, name, std::make_shared<Handler>(std::move(handler))});
  if (!known) {
    QObject::connect(observer, &QObject::destroyed, [this, observer] { removeObserver(observer); });
  }
}

void NotificationCenter::removeObserver(QObject* observer) {
  std::erase_if(registrations_, [observer](const Registration& r) { return r.observer == observer; });
}

void NotificationCenter::post(const QString& name) {
  // Handlers may add or remove observers; deliver to those registered at posting time
  // that are still registered when their turn comes.
  std::vector<Registration> snapshot = registrations_;
  for (const Registration& registration : snapshot) {
    if (registration.name != name) continue;
    const bool stillRegistered =
        std::any_of(registrations_.begin(), registrations_.end(),
                    [&](const Registration& r) { return r.handler == registration.handler; });
    if (stillRegistered) (*registration.handler)(name);
  }
}

}  // namespace tarnbeck
