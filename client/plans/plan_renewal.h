#pragma once

#include <QObject>
#include <string>

#include "host_calls/call_scope.h"

namespace TarnClient {

class CLiveWall;
class CPlanFamily;

/// Brings the new version of the plan that plays onto the wall when this client has saved one, in the editor or else.
/// Thread: GUI; the service is asked on the thread pool.
class CPlanRenewal : public QObject {
  Q_OBJECT
 public:
  explicit CPlanRenewal(CLiveWall* wall, QObject* parent = nullptr);

  /// Not owned; may die first.
  void Attach(CPlanFamily* family);

 private:
  void OnSaved(const std::string& plan_code);

  CLiveWall* const wall_;
  HostCalls::CCallScope newest_;
};

}  // namespace TarnClient
