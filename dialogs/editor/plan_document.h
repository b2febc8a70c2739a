#pragma once

#include <QObject>
#include <QUndoStack>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plan_draft.h"

namespace TarnPlanView {

/// A camera to put into a window.
struct DraftCamera {
  QString index_code, name;
};

/// One plan in the editor, with undo of every edit. Each call below is one step of the stack; consecutive edits of the
/// same text or number become one step. A call that changes nothing makes no step. Thread: GUI.
class CPlanDocument : public QObject {
  Q_OBJECT
 public:
  enum Change {
    NoChange = 0,
    HeadChanged = 1,     // name, group, timed run
    PagesChanged = 2,    // pages came, went or moved
    PageChanged = 4,     // split, dwell or windows of one page
    CurrentChanged = 8,  // another page is current
  };

  explicit CPlanDocument(QObject* parent = nullptr);
  ~CPlanDocument() override;

  /// A new plan with one empty page, clean.
  void StartNew(const QString& name, const QString& group_code);
  /// A plan as the host has it, clean. What the editor does not know is kept for the requests.
  void Load(const view_plugin_protocol::GetPlanDetailResponse& detail);
  /// The plan as it is now is on the host, under this revision.
  void MarkSaved(int64_t revision);
  /// From now on the plan is a new one: it has no code and no revision yet. Dirty until saved.
  void BecomeNew();
  /// Overwrite: the next update carries the host's revision, whatever was loaded.
  void AdoptRevision(int64_t revision);

  const PlanDraft& Draft() const { return draft_; }
  /// Empty for a new plan.
  std::string PlanCode() const;
  int64_t Revision() const;
  bool IsDirty() const;
  QUndoStack& UndoStack() { return stack_; }

  int CurrentPage() const { return current_page_; }
  /// No step of the stack. Clamped to the pages there are.
  void SetCurrentPage(int page);

  void SetName(const QString& name);
  void SetGroup(const QString& group_code);
  void SetAutoRun(bool on);
  void SetTimes(const QTime& begin, const QTime& end);

  /// After `page`, which becomes the new one's neighbour; the new page is current. At most kMaxPages.
  void AddPage(int page);
  void DuplicatePage(int page);
  /// The last page stays, emptied.
  void RemovePage(int page);
  /// `to`: its place after the move.
  void MovePage(int from, int to);
  /// 1, 2, 4 or 8. Windows beyond a smaller split are kept out of sight until the plan is saved.
  void SetSplit(int page, int split_type);
  /// Clamped to kMinDwellSeconds..kMaxDwellSeconds.
  void SetDwell(int page, int seconds);

  /// False, with SignalRefused(), when the plan would hold more than kMaxFilledWindows.
  bool PutCamera(int page, int window_no, const DraftCamera& camera);
  /// From `first_window` on, over the filled ones, as far as the page's split goes; one step.
  bool FillPage(int page, int first_window, const QVector<DraftCamera>& cameras);
  void SwapWindows(int page, int window_no, int other_window_no);
  void ClearWindow(int page, int window_no);
  void ClearPage(int page);
  void SetStream(int page, int window_no, int stream_type);
  void SetPreset(int page, int window_no, int preset_no);

  /// Pages numbered from 1; windows beyond a page's split left out; names as typed.
  view_plugin_protocol::AddPlanRequest MakeAddRequest() const;
  view_plugin_protocol::UpdatePlanRequest MakeUpdateRequest() const;

 Q_SIGNALS:
  /// `change`: a bit mask of Change; `page`: the page of PageChanged, else -1. After every edit, undo and redo.
  void SignalChanged(int change, int page);
  void SignalDirtyChanged(bool dirty);
  /// An edit that could not be done, with the reason for the user.
  void SignalRefused(const QString& reason);

 private:
  class Step;
  friend class Step;

  void Push(const QString& text, PlanDraft after, int merge_id, int current_page);
  void Take(const PlanDraft& draft, int current_page);
  bool HasPage(int page) const;
  void RenewDirty();

  PlanDraft draft_, saved_;
  view_plugin_protocol::GetPlanDetailResponse origin_;
  QUndoStack stack_;
  int current_page_ = 0;
  bool was_dirty_ = false, is_new_ = true;
};

}  // namespace TarnPlanView
