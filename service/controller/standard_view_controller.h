#pragma once

#include <QModelIndex>
#include <QObject>
#include <functional>
#include <list>
#include <memory>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "MarUIControl/nomal_message.h"
#include "call_answer.h"
#include "tarn_plan_view_export.h"

namespace TarnPlanView {

class CStandardPlanModel;
class CPlanNodeRef;
struct RecentChanges;
struct SubItems;

/// Asks the host to read or change plans, groups and the default view, off the GUI thread.
///
/// Each call checks its arguments (guards are silent but for the window limit), reads what it needs from the rows and
/// returns at once; the answer comes later as signals, all emitted on the controller's thread: first the success
/// signal, then signalShowMessage() with state 0 where a tip belongs to it; after a failed call
/// signalShowMessage() with the host's text and state 1. Answers of several calls may come in any order, but those of
/// changes of one plan or group. A row is held by its code and position while its request runs; when it is gone the
/// signals carry an invalid index. Results reach the plan data before any other receiver. A controller that dies gets
/// no answers. Thread: GUI.
class TARNPLANVIEW_EXPORT CStandardViewController : public QObject {
  Q_OBJECT
 public:
  /// For requests of the panels that show `model`, which owns the controller.
  explicit CStandardViewController(CStandardPlanModel* model);
  ~CStandardViewController() override;

  /// What must be known of one very call: called once, after the signals, unless the controller dies before; without a
  /// delay when nothing is sent.
  using PlanAnswer = std::function<void(const CallAnswer&)>;

  /// Makes a group below a row: SignalAddPlanGroupSucc(). Nothing for an invalid parent or an empty name.
  void AddPlanGroupByIndexName(const QModelIndex& parent, const QString& name, const PlanAnswer& answer = ignore);
  /// Deletes a group with all below it: SignalDeletePlanGroupSucc(). Nothing for a row without a code.
  void DeletePlanGroupByIndex(const QModelIndex& index, const PlanAnswer& answer = ignore);
  /// Deletes a plan: SignalDeletePlanSucc().
  void DeletePlanByIndex(const QModelIndex& index, const PlanAnswer& answer = ignore);
  /// Takes a deletion back. Its row is in the trees below `parent_code`, where they show that, when this is answered.
  void RestoreDeleted(const view_plugin_protocol::RestoreDeletedRequest& request, const QString& parent_code,
                      const PlanAnswer& answer = ignore);
  /// Renames a group: SignalUpdatePlanGroupNameSucc().
  void UpdatePlanGroupName(const QModelIndex& index, const QString& name);
  /// Makes a plan: SignalAddPlanSucc(). Nothing is sent when the pages hold more than 128 filled windows: that is said.
  void AddPlanParam(const view_plugin_protocol::AddPlanRequest& request, const PlanAnswer& answer = ignore);
  /// Replaces a plan: SignalUpdatePlanSucc(). Limited as AddPlanParam(). `old_name` is for those who watch the call:
  /// the host does not get it. With FailureText::ByCaller a failure brings no signal: `answer` has its text.
  void UpdatePlanParam(const view_plugin_protocol::UpdatePlanRequest& request, const QString& old_name,
                       const PlanAnswer& answer = ignore, FailureText failure = FailureText::ByMessage);
  /// Fetches a plan to be played: answers with SignalPlayPlanView(); nothing for an empty code.
  void PlayPlanViewByIndexCode(const std::string& indexCode);
  /// For who plays the plans that others ask for, and must know when none is on its way any more: `answered` is called
  /// once for each PlayPlanViewByIndexCode() that was sent, after its signals and with its code, whether it succeeded
  /// or failed. Until `listener` dies or another one takes its place.
  void SetPlayListener(QObject* listener,
                       const std::function<void(const CallAnswer&, const std::string& code)>& answered);
  /// Fetches a plan to be edited: answers with SignalGetPlanInfo().
  void GetPlanInfoByIndexCode(const std::string& indexCode, const PlanAnswer& answer = ignore);
  /// Records a play in the host's log; silent in every case. Nothing for an empty name.
  void AddOperationPlayPlan(const QString& name, bool automatic, bool from_history);
  /// Fetches the user's default view: answers with SignalConfigPlayView() when there is one, else with nothing.
  void InitGetViewDefaultConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest& request);
  /// The same for who must know that there is none: the answer's text, the code, is empty then.
  void InitGetViewDefaultConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest& request,
                                const PlanAnswer& answer);
  /// Fetches the user's default view and keeps it for the default-view chooser. Blocks until the host has answered;
  /// false when it fails, after signalShowMessage().
  bool GetClientViewDefaultConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest& request);
  /// Stores the user's default view. Blocks until the host has answered; false when it fails; signalShowMessage() in
  /// either case.
  bool SetClientViewDefaultConfig(const view_plugin_protocol::ClienDefaultViewConfigRequest& request);
  /// Whether the host has groups or plans below a row. Blocks until it has answered, by design: a deletion must not
  /// start before the answer is known. False when the host cannot say.
  bool IsHaveChilds(const QModelIndex& index);
  /// Whether the pages together hold more than 128 filled windows; then the refusal is shown.
  bool IsExceedAddLimit(const std::list<view_plugin_protocol::PlanPage>& pages);

  bool event(QEvent* event) override;

 Q_SIGNALS:
  /// The model's signal of that name, passed on.
  void SignalFinshCreateRootPlan();
  /// The plan that was to be played has come. The host shows it, and says so by the panel's
  /// SetCurPlayItemByIndexCode().
  void SignalPlayPlanView(const view_plugin_protocol::GetPlanDetailResponse& plan_info);
  /// The children of `index` have come. The row is invalid when it is gone by then. Rows, expanders and observers are
  /// made of them before any other receiver sees this.
  void SignalGetPlanGroupListSucc(const QModelIndex& index,
                                  const view_plugin_protocol::GetPlanGroupsResponse& plan_group_list,
                                  const view_plugin_protocol::GetPlansInGroupResponse& plan_list);
  /// A group was made below `index`.
  void SignalAddPlanGroupSucc(const QModelIndex& index, const view_plugin_protocol::PlanGroup& plan_group);
  /// A group was deleted. Its row is gone from the trees by the time other receivers see this, and the index with it.
  void SignalDeletePlanGroupSucc(const QModelIndex& index);
  /// A plan was deleted; as for groups.
  void SignalDeletePlanSucc(const QModelIndex& index);
  /// A group has another name.
  void SignalUpdatePlanGroupNameSucc(const QModelIndex& index, const QString& group_name);
  /// A plan was replaced. Its row was made again, in the group it is in now.
  void SignalUpdatePlanSucc(const view_plugin_protocol::UpdatePlanRequest& plan_param);
  /// A plan was made; the second is its code. It has a row where its group was loaded.
  void SignalAddPlanSucc(const view_plugin_protocol::AddPlanRequest& plan_param, const QString& get_plan_index_code);
  /// The plan that was to be edited has come.
  void SignalGetPlanInfo(const view_plugin_protocol::GetPlanDetailResponse& plan_info);
  /// The expansion of `index` is finished without new rows, or has failed.
  void SignalFinishAnsyGetSubItem(const QModelIndex& index, bool b_expand = true);
  /// The children of this group, by its code, are being asked for, or not any more: emitted before the answer, so that
  /// what is added elsewhere meanwhile goes into the trees.
  void signalSetNodeLoaded(const QString& index_code, bool is_loaded);
  /// A text for the user, in the user's language: that a change was made, or why a call has failed. A host that shows
  /// panels gets it as their SignalMessageTipNeeded().
  void signalShowMessage(const QString& message_tip, MarUIControl::CNomalMessage::AlertState state);
  /// For hosts to hand over a default view that they have read themselves. For direct connections only: the record is
  /// passed by reference. Never emitted by the controller.
  void SignalGetViewConfigData(view_plugin_protocol::GetClientDefaultViewConfigResponse& response_param);
  /// The same for an answer to storing it.
  void SignalSetViewConfigData(view_plugin_protocol::ClienDefaultViewConfigReponse& response_param);
  /// The user's default view is known: index code, and 16000 for a plan or 16001 for a group.
  void SignalConfigPlayView(const QString&, int type);

 public Q_SLOTS:
  /// The tree asks for the children of a row. Answered by SignalGetPlanGroupListSucc() or SignalFinishAnsyGetSubItem();
  /// not at all for a group without a code, and an invalid row.
  void OnExpandViewTreeItem(const QModelIndex&);

 private:
  static void ignore(const CallAnswer&) {}
  void registerMetaTypes();
  void connectDataManager();
  /// The calls themselves, once their arguments are in order: each puts one request off this thread and says on it what
  /// came of it.
  void addPlanGroupByIndexNameThread(const QModelIndex& parent, const QString& name, const PlanAnswer& reply);
  void deletePlanGroupByIndexThread(const QModelIndex& index, const PlanAnswer& reply);
  void deletePlanByIndexThread(const QModelIndex& index, const PlanAnswer& reply);
  void updatePlanGroupNameThread(const QModelIndex& index, const QString& name);
  void addPlanParamThread(const view_plugin_protocol::AddPlanRequest& request, const PlanAnswer& reply);
  void updatePlanParamThread(const view_plugin_protocol::UpdatePlanRequest& request, const QString& old_name,
                             const PlanAnswer& reply, FailureText failure);
  void downloadPlanInfoThread(const std::string& indexCode);
  void getPlanInfoByIndexCodeThread(const std::string& indexCode, const PlanAnswer& reply);
  void addOperationPlayPlanThread(const QString& name, bool automatic, bool from_history);
  /// As the public calls of the default view.
  void initGetViewConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest& request,
                         const PlanAnswer& reply);
  /// Marks the row as loaded for the families that do so before the fetch.
  void announceLoading(const QString& code, int type);
  void downloadSubPlanGroupListThread(const QModelIndex& index);
  bool getViewDefaultConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest& request);
  bool setViewDefaultConfig(const view_plugin_protocol::ClienDefaultViewConfigRequest& request);

  struct Expansion;
  /// Asks again, always off this thread, while what came was overtaken by changes.
  void fetchSubItems(const Expansion& expansion);
  void takeSubItems(Expansion expansion, const SubItems& items, const RecentChanges& changes);
  void showSubItems(const Expansion& expansion, const SubItems& items);
  void fetchLater(const Expansion& expansion);
  void finishExpand(const CPlanNodeRef& node, const SubItems& items);
  void showSuccess(const QString& text);
  void showFailure(const std::string& error_info);

  struct CStandardViewControllerData;
  std::shared_ptr<CStandardViewControllerData> data_;
};

}  // namespace TarnPlanView
