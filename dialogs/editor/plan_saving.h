#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include "plan_conflict.h"
#include "plan_draft.h"

namespace TarnPlanView {

class CPlanDocument;
class CStandardViewController;

/// Sends the document to the host and finds out what came of it: one of the signals from SignalSaved() on follows each
/// save, unless it is forgotten. Thread: GUI.
class CPlanSaving : public QObject {
  Q_OBJECT
 public:
  /// The document outlives this.
  CPlanSaving(CPlanDocument* document, QObject* parent);

  /// Not owned. A save that is under way at another one fails, but what comes of it late still counts.
  void SetController(CStandardViewController* controller);
  /// Updates the plan, or adds it when it is new. `thumbnail`: PNG bytes; empty keeps what the plan has. False when
  /// there is nobody to send it to, or a save is under way.
  bool Save(const std::string& thumbnail);
  /// Adds the document as a new plan under this name. The document becomes that plan when the host has it, and stays
  /// what it is when not.
  bool SaveAsNew(const QString& name, bool auto_run, const std::string& thumbnail);
  bool IsSaving() const { return saving_; }
  /// Whether the save under way takes longer than a user is to wait without a way out.
  bool IsSlow() const { return saving_ && !patience_.isActive(); }
  /// Milliseconds after which a save is slow.
  void SetPatience(int milliseconds) { patience_.setInterval(milliseconds); }
  /// What is under way is told nobody any more.
  void Forget();

 Q_SIGNALS:
  void SignalSlow();
  /// The host has the plan under this code, in this group; SignalSaved() or, when it was edited since, SignalFailed()
  /// follows.
  void SignalStored(const QString& plan_code, const QString& group_code);
  void SignalSaved();
  /// `text`: the host's, or empty when the failure has been told already.
  void SignalFailed(const QString& text);
  void SignalChangedElsewhere(const QString& text, const view_plugin_protocol::GetPlanDetailResponse& theirs);
  void SignalDeleted(const QString& text);

 private:
  void Send(view_plugin_protocol::UpdatePlanRequest request, const std::string& thumbnail);
  void OnAnswer(bool ok, const QString& text);
  void OnSaved(const std::string& plan_code);
  void OnFound(CPlanConflict::Kind kind, const QString& text,
               const view_plugin_protocol::GetPlanDetailResponse& theirs);
  void OnControllerLost();
  void StopWaiting();

  CPlanDocument* const document_;
  QPointer<CStandardViewController> controller_;
  CPlanConflict conflict_;
  QTimer patience_;
  PlanDraft edited_, sent_;  // the document at that time, and as what the host got it
  std::string code_;         // empty: a new plan
  int64_t revision_ = 0;
  int save_no_ = 0;
  bool saving_ = false;
};

}  // namespace TarnPlanView
