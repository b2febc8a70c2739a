#pragma once

#include <QObject>
#include <QPointer>

#include "plan_conflict.h"

namespace TarnPlanView {

class CPlanDocument;
class CStandardViewController;

/// Sends the document to the host and finds out what came of it. Thread: GUI.
///
/// The controller's failures do not say whose they are. So every failure during a save makes this look at the plan; the
/// answer to the save itself counts whenever it comes.
class CPlanSaving : public QObject {
  Q_OBJECT
 public:
  /// The document outlives this.
  CPlanSaving(CPlanDocument* document, QObject* parent);

  /// Not owned.
  void SetController(CStandardViewController* controller);
  /// Updates the plan, or adds it when it is new. `thumbnail`: PNG bytes; empty keeps what the plan has. False when
  /// there is nobody to send it to, or a save is under way.
  bool Save(const std::string& thumbnail);
  bool IsSaving() const { return saving_; }
  /// What is under way is told nobody any more.
  void Forget();

 Q_SIGNALS:
  void SignalSaved();
  /// `text`: the host's, or empty when the failure has been told already.
  void SignalFailed(const QString& text);
  void SignalChangedElsewhere(const QString& text, const view_plugin_protocol::GetPlanDetailResponse& theirs);
  void SignalDeleted(const QString& text);

 private:
  void OnAdded(const view_plugin_protocol::AddPlanRequest& request, const QString& plan_code);
  void OnUpdated(const view_plugin_protocol::UpdatePlanRequest& request);
  void OnMessage(const QString& text, int state);
  void OnFound(CPlanConflict::Kind kind, const QString& text,
               const view_plugin_protocol::GetPlanDetailResponse& theirs);
  bool IsMine(const view_plugin_protocol::AddPlanRequest& request) const;
  void StopWaiting();
  void Finish(int64_t revision, const std::string& plan_code);

  CPlanDocument* const document_;
  QPointer<CStandardViewController> controller_;
  CPlanConflict conflict_;
  view_plugin_protocol::UpdatePlanRequest sent_;  // without a code: a new plan
  int sent_at_ = 0;                               // how far the document's undo stack was
  bool saving_ = false, answer_due_ = false;
};

}  // namespace TarnPlanView
