#include "platform/process_activity.h"

#ifdef __APPLE__
#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/pwr_mgt/IOPMLib.h>
#endif

namespace tarnbeck {
namespace {
std::function<void(const QString&)>& observer() {
  static std::function<void(const QString&)> current;
  return current;
}
}  // namespace

ProcessActivity::ProcessActivity(const QString& reason) : reason_(reason) {
#ifdef __APPLE__
  IOPMAssertionID id = 0;
  CFStringRef name = CFStringCreateWithCString(nullptr, reason.toUtf8().constData(), kCFStringEncodingUTF8);
  if (IOPMAssertionCreateWithName(kIOPMAssertionTypePreventUserIdleSystemSleep, kIOPMAssertionLevelOn, name, &id) ==
      kIOReturnSuccess) {
    assertion_ = id;
  }
  CFRelease(name);
#endif
  if (observer()) observer()(QStringLiteral("begin:") + reason_);
}

ProcessActivity::~ProcessActivity() {
#ifdef __APPLE__
  if (assertion_ != 0) IOPMAssertionRelease(assertion_);
#endif
  if (observer()) observer()(QStringLiteral("end:") + reason_);
}

void ProcessActivity::setObserver(std::function<void(const QString&)> newObserver) { observer() = std::move(newObserver); }

}  // namespace tarnbeck
