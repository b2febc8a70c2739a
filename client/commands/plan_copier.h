#pragma once

#include <QObject>
#include <QPointer>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/call_scope.h"

namespace TarnPlanView {
class CStandardViewController;
}

namespace TarnClient {

/// Makes copies of plans, each beside its original and under a free name: all pages and the thumbnail, but no daily
/// run, or both would start at the same time. One at a time. Thread: GUI; the service is asked on the thread pool.
class CPlanCopier : public QObject {
  Q_OBJECT
 public:
  /// Not owned; may die first.
  CPlanCopier(TarnPlanView::CStandardViewController* controller, QObject* parent);

  /// Success and a refusal of the service are said by the controller.
  void Copy(const std::string& plan_code);
  /// What is under way makes no plan any more, unless the service has it already, and is not heard of.
  void Drop();

 Q_SIGNALS:
  void SignalCopied(const QString& plan_code);
  /// The original could not be read, or another copy is under way.
  void SignalFailed(const QString& error);

 private:
  void Add(const view_plugin_protocol::AddPlanRequest& copy);

  QPointer<TarnPlanView::CStandardViewController> controller_;
  HostCalls::CCallScope calls_;  // of the copy being made
};

}  // namespace TarnClient
