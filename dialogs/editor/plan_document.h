#pragma once

#include <QObject>
#include <QUndoStack>
#include <functional>
#include <optional>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "draft_edits.h"
#include "plan_draft.h"

namespace TarnPlanView {

/// One plan in the editor, with undo of every edit. Each call below is one step of the stack; consecutive edits of the
/// name, the times or one page's dwell time become one step. A call that changes nothing, or names a page or a window
/// that is not in sight, makes no step. Undo and redo bring the page to the front where the step was made. Thread: GUI.
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

  /// A new plan with one empty page, clean. SignalChanged() reports everything at once.
  void StartNew(const QString& name, const QString& group_code, const QString& group_name = {}, int family = 0);
  /// A plan as the host has it, clean. What the editor does not know is kept for the requests. Pages are sorted by
  /// their numbers, as they play. SignalChanged() reports everything at once.
  void Load(const view_plugin_protocol::GetPlanDetailResponse& detail);
  /// The plan as it is now is on the host, under this revision; a new one under this code. Windows out of sight are
  /// forgotten, but undo still knows them.
  void MarkSaved(int64_t revision, const std::string& plan_code = {});
  /// The same of a plan that was sent as `saved`: edits made since then stay, and are not saved.
  void MarkSaved(const PlanDraft& saved, int64_t revision, const std::string& plan_code);
  /// The plan as the host has it now takes the place of the edited one, clean. One step: undone, the edited one would
  /// go over it. ReplacedEdits() tells of edits that it replaces.
  void TakeOver(const view_plugin_protocol::GetPlanDetailResponse& detail);
  /// The group bears this name now; no edit.
  void RenameGroup(const std::string& group_code, const std::string& name);
  /// As it comes into the editor: at least one page.
  static PlanDraft DraftOf(const view_plugin_protocol::GetPlanDetailResponse& detail);
  /// The next update goes over this version of the host's, whatever was loaded. The edited plan stays.
  void GoOver(const view_plugin_protocol::GetPlanDetailResponse& detail);

  const PlanDraft& Draft() const { return draft_; }
  /// Where in the undo stack the user's own version is, while one that was taken over stands in its place.
  std::optional<int> ReplacedEdits() const;
  /// As the host has the plan, as far as is known here.
  const PlanDraft& Saved() const { return saved_; }
  int64_t Revision() const { return origin_.revision; }
  /// Empty for a new plan.
  std::string PlanCode() const { return origin_.index_code; }
  /// Of the group that the plan is in on the host.
  std::string GroupCode() const { return origin_.group_index_code; }
  /// Whether a save would change what is on the host.
  bool IsDirty() const;
  QUndoStack& UndoStack() { return stack_; }
  /// Edits of windows that would move, cover or clear anything but a camera are refused.
  void SetOtherContentFixed(bool fixed) { other_content_fixed_ = fixed; }

  int CurrentPage() const { return current_page_; }
  /// No step of the stack. Clamped to the pages there are.
  void SetCurrentPage(int page);

  void SetName(const QString& name);
  /// Without a family the plan stays in the one it is in.
  void SetGroup(const QString& group_code, const QString& group_name = {}, int family = -1);
  void SetAutoRun(bool on);
  /// Any order of the two; times that are none are ignored.
  void SetTimes(const QTime& begin, const QTime& end);

  /// After `page`, which becomes the new one's neighbour and lends it split and dwell time; the new page is current. At
  /// most kMaxPages, else SignalRefused(). Adding, duplicating, removing and moving number all pages again.
  void AddPage(int page);
  /// Right after the page, and current; refused like a new page, and when it would hold too many windows.
  void DuplicatePage(int page);
  /// The last page stays, emptied.
  void RemovePage(int page);
  /// `to`: its place after the move.
  void MovePage(int from, int to);
  /// 1, 2, 4 or 8. Windows beyond a smaller split are kept out of sight until the plan is saved. SignalRefused() when
  /// they come back and find the plan full.
  void SetSplit(int page, int split_type);
  /// Clamped to kMinDwellSeconds..kMaxDwellSeconds.
  void SetDwell(int page, int seconds);

  /// Over what is there; the same camera keeps its stream and preset. False, with SignalRefused(), when the plan would
  /// hold more than kMaxFilledWindows or the window is fixed; false alone for no such window or no camera.
  bool PutCamera(int page, int window_no, const DraftCamera& camera);
  /// Into empty windows from this one on, also of the pages that follow and of new ones like this behind the last, as
  /// FillPlan() does; one step, and the page stays current. SignalRefused() when there was no room for any.
  PlanFilling Fill(int page, int first_window, const QVector<DraftCamera>& cameras);
  bool SwapWindows(int page, int window_no, int other_window_no);
  void ClearWindow(int page, int window_no);
  /// Windows that are out of sight as well. Fixed content stays, and SignalRefused() says so.
  void ClearPage(int page);
  void SetStream(int page, int window_no, int stream_type);
  void SetPreset(int page, int window_no, int preset_no);

  /// Names as typed, windows that a smaller split put out of sight left out, everything untouched as the host gave it.
  /// Of a new plan it has neither code nor revision.
  view_plugin_protocol::UpdatePlanRequest MakeUpdateRequest() const;

 Q_SIGNALS:
  /// `change`: a bit mask of Change; `page`: the page of PageChanged, else -1. After every edit, undo and redo.
  void SignalChanged(int change, int page);
  void SignalDirtyChanged(bool dirty);
  /// Another page is about to be current, or pages to come and go: what is being typed for this one has to come now.
  void SignalLeavingPage();
  /// An edit that could not be done, with the reason for the user.
  void SignalRefused(const QString& reason);

 private:
  class Step;
  friend class Step;
  using Windows = std::list<view_plugin_protocol::PlanWindow>;

  PlanDraft DraftToEdit(const view_plugin_protocol::GetPlanDetailResponse& detail);
  void Begin(PlanDraft draft, view_plugin_protocol::GetPlanDetailResponse origin);
  /// The current page before and after a step; -1: the step does not care.
  struct PagesToShow {
    int before = -1, after = -1;
  };

  /// False when the step would fill too many windows.
  bool Push(const QString& text, PlanDraft after, PagesToShow pages = {-1, -1}, int merge_id = -1);
  void PushPages(const QString& text, PlanDraft after, int current_page);
  bool PushPage(const QString& text, int page, const std::function<void(DraftPage&)>& edit, int merge_id = -1);
  void EditShown(const QString& text, int page, int window_no,
                 const std::function<void(view_plugin_protocol::PlanWindow&)>& edit);
  void Take(const PlanDraft& draft, int current_page);
  bool HasPage(int page) const { return page >= 0 && page < draft_.pages.size(); }
  bool HasWindow(int page, int window_no) const;
  bool HasRoomForPage();
  static QString OnlyCamerasText();
  static QString FullText();
  static QString NoMorePagesText();
  void RenewDirty();
  std::string TimeText(const QTime& time, const std::string& loaded) const;
  std::list<view_plugin_protocol::PlanPage> PagesToSave() const;

  PlanDraft draft_, saved_;
  view_plugin_protocol::GetPlanDetailResponse origin_;  // without its pages
  QUndoStack stack_;
  int current_page_ = 0;
  bool was_dirty_ = false, had_no_pages_ = false, other_content_fixed_ = false;
};

}  // namespace TarnPlanView
