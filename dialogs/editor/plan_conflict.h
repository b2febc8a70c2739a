#pragma once

#include <QObject>
#include <optional>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/call_scope.h"

namespace TarnPlanView {

/// Finds out what stands behind an update that the host refused: asks for the plan, and where that fails, whether any
/// group lists it; it is deleted only when all of them have answered. Thread: GUI; asks off it, one question at a time.
/// Dead, it tells no one anything.
class CPlanConflict : public QObject {
  Q_OBJECT
 public:
  enum Kind {
    OtherFailure,      // the plan is as it was loaded, or the host does not say
    ChangedElsewhere,  // the host has a newer revision
    Deleted,           // the host has no such plan
  };
  Q_ENUM(Kind)

  struct Question {
    std::string plan_code, group_code;
    int64_t revision = 0;  // the one that was refused
    QString reason;        // the host's text on it
  };

  explicit CPlanConflict(QObject* parent = nullptr);
  ~CPlanConflict() override;

  /// One SignalFound() follows, unless another question is put before.
  void FindOut(const Question& question);
  /// No signal follows any more.
  void Forget();

 Q_SIGNALS:
  /// `reason`: the host's text on the refused update; `theirs`: the plan as the host has it, without a code when it
  /// could not be fetched.
  void SignalFound(TarnPlanView::CPlanConflict::Kind kind, const QString& reason,
                   const view_plugin_protocol::GetPlanDetailResponse& theirs);

 private:
  void FetchPlan();
  void AskWhetherListed(int looks_left);
  void OnListing(std::optional<bool> is_listed, int looks_left);
  void Tell(Kind kind, const view_plugin_protocol::GetPlanDetailResponse& theirs = {});

  Question question_;
  HostCalls::CCallScope calls_;  // of the question under way
};

}  // namespace TarnPlanView
