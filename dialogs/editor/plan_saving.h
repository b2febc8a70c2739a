#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <string>

#include "host_calls/call_scope.h"
#include "plan_draft.h"
#include "save_conflict.h"

namespace TarnPlanView {

class CPlanDocument;
class CStandardViewController;
struct CallAnswer;

/// Sends the document to the host and finds out what came of it.
///
/// Each save ends with one of SignalStored(), SignalFailed() and SignalConflict(), unless it is forgotten. Before that
/// SignalSlow() may come. When the controller goes meanwhile the save has failed, but the host may have the plan all
/// the same: then SignalStored() follows late. Thread: GUI.
class CPlanSaving : public QObject {
  Q_OBJECT
 public:
  /// The document outlives this.
  CPlanSaving(CPlanDocument* document, QObject* parent);

  /// Not owned.
  void SetController(CStandardViewController* controller);
  /// Updates the plan, or adds it when it is new. `thumbnail`: PNG bytes; empty keeps what the plan has. False when
  /// there is no controller, or a save is under way.
  bool Save(const std::string& thumbnail);
  /// Adds the document as a new plan under this name. The document becomes that plan when the host has it, and stays
  /// what it is when not.
  bool SaveAsNew(const QString& name, bool auto_run, const std::string& thumbnail);
  bool IsSaving() const { return step_ == Step::Sending || step_ == Step::Asking; }
  /// Whether the save under way takes longer than a user is to wait without a way out.
  bool IsSlow() const { return IsSaving() && !patience_.isActive(); }
  /// Milliseconds after which a save is slow.
  void SetPatience(int milliseconds) { patience_.setInterval(milliseconds); }
  /// No signal comes of the save under way, nor of one whose controller went.
  void Forget();

 Q_SIGNALS:
  void SignalSlow();
  /// The host has the plan under this code, in this group, and the document is that plan; it is dirty only when it was
  /// edited since it was sent.
  void SignalStored(const QString& plan_code, const QString& group_code);
  /// `text`: why, for the user; empty when the controller has shown it already.
  void SignalFailed(const QString& text);
  /// The host refused the update, because the plan is no longer what was loaded. `theirs`: the plan as it is now; with
  /// nothing but the host's text when it was deleted. The user has heard nothing of it yet.
  void SignalConflict(TarnPlanView::SaveConflict conflict, const view_plugin_protocol::GetPlanDetailResponse& theirs);

 private:
  enum class Step {
    Idle,
    Sending,
    Asking,     // refused; the host is asked for the plan as it is now
    Abandoned,  // the controller has gone; the plan may have been stored nevertheless
  };
  /// What was sent, until its answer has come.
  struct Attempt {
    PlanDraft edited, sent;  // the document at that time, and as what the host got it
    std::string plan_code;   // empty: a new plan
    int64_t revision = 0;
    QString refusal;  // why the host refused it
  };

  bool Send(view_plugin_protocol::UpdatePlanRequest request, const PlanDraft& sent, const std::string& thumbnail);
  void OnAnswer(const CallAnswer& answer);
  void OnStored(const std::string& plan_code);
  void AskForTheirs();
  void OnTheirs(const HostCalls::Result<view_plugin_protocol::GetPlanDetailResponse>& now);
  void OnControllerLost();
  void Fail(const QString& text);

  CPlanDocument* const document_;
  QPointer<CStandardViewController> controller_;
  QTimer patience_;
  Step step_ = Step::Idle;
  Attempt attempt_;
  HostCalls::CCallScope calls_;  // of the attempt
};

}  // namespace TarnPlanView
