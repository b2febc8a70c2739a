#pragma once

#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QObject>
#include <QVector>
#include <memory>
#include <optional>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "ResourceData/resource_observer.h"
#include "Wren/Base/singleton.h"
#include "theme_node_type.h"

class QStandardItem;

namespace TarnPlanView {

class CChangeJournal;
class CRowRecord;
class CStandardPlanModel;
class CView;
class CViewWatch;
class CViewGroup;
struct ChildRecords;

/// One record of a plan or group serves its rows in every model.
using RowRecords = QVector<QExplicitlySharedDataPointer<const CRowRecord>>;

/// The owner of the plan data: all plan tree models, the observers of groups and plans, and the loading.
///
/// Every change, whether made here or elsewhere, is applied to every registered model, in registration order, so that
/// all panels show the same tree. Created after the host's plan service is up and a user is logged in.
/// Thread: GUI, for every member.
class CViewModelDataManager : public QObject, public Wren::Base::CSingleton<CViewModelDataManager> {
  Q_OBJECT
 public:
  ~CViewModelDataManager() override;

  void InitViewConfigInterfacePointer();
  /// Registers the root observer, and the nine models when UninitManager() took them out.
  void InitManager();
  /// Stops the download poll, unregisters all observers, empties the models and takes them out of the list. The models
  /// themselves live as long as the manager. Answers of requests that are still under way change nothing any more.
  void UninitManager();
  void CreateViewGroupManager();
  void DeleteViewGroupManager();

  /// Loads every model once the host has its data; a second call while loading or loaded only repeats
  /// SignalDataDownloadFinished().
  void LoadAllViewManagerModelData();
  void InitRootItem();
  /// Empties every model, makes a later load possible and lets the host fetch its data again.
  void ClearAllViewModelData();
  /// Empties every model; the loading flags stay.
  void ClearModelData();
  bool IsViewResourceDownLoadFinish() const;
  bool IsViewModelInitFinish() const;

  void AddViewManagerModel(CStandardPlanModel* model);
  void RemViewManagerModel(CStandardPlanModel* model);
  /// The first registered model of this monitor and theme, or null.
  CStandardPlanModel* GetViewManagerByTheme(const QString& monitorId, ThemeNodeType type) const;

  /// Loads everything below `code` depth first, descending through the rows of the first registered model.
  void InsertAllChildItem(const QString& code, int theme);
  /// Fetches the groups (plans) directly below `code` and puts the missing ones into every model that has the row.
  /// False when the host failed; `error_kind` says why.
  bool InsertSubGroupNode(const QString& code, int theme, int32_t* error_kind = nullptr);
  bool InsertSubPlanNode(const QString& code, int theme, int32_t* error_kind = nullptr);
  void addPlanGroupList(CStandardPlanModel* model, QStandardItem* parent,
                        const view_plugin_protocol::GetPlanGroupsResponse& groups);
  void addPlanList(CStandardPlanModel* model, QStandardItem* parent,
                   const view_plugin_protocol::GetPlansInGroupResponse& plans);
  void addPlanView(CStandardPlanModel* model, QStandardItem* parent, const view_plugin_protocol::PlanBasicInfo& plan);

  /// Observer of one plan or group; the existing one when there is one, null from UninitManager() to InitManager().
  std::shared_ptr<CView> CreateView(const view_plugin_protocol::PlanBasicInfo& plan);
  void DeleteView(const std::string& indexCode);
  /// Connects one of the manager's observers to it, once. Observers ask for it before they say anything: most of a
  /// large tree never do, and connections would be most of what they hold.
  void Follow(CView& view);
  void Follow(CViewGroup& group);
  std::shared_ptr<CViewGroup> CreateViewGroup(const view_plugin_protocol::PlanGroup& group);
  void DeleteViewGroup(const std::string& indexCode);
  void CreateObserverUpdateResource(const ResourceData::IResourceObserver::Param& param);
  void CreateObserverRootUpdate(const ResourceData::IResourceObserver::Param& param);
  void CreateGroupObserver(const std::string& indexCode, const int& type);
  void CreateViewObserverUpdate(const std::string& indexCode, const int& type);

  /// Marks `code` as the playing plan (or not) in the models of one monitor.
  void SetPlanPlayStateByIndexCode(const QString& monitorId, const QString& code, bool playing);

  void OnRootChildAdded(ResourceData::ResourceType child_type);
  /// A deletion was taken back: its row comes in below this group or root.
  void OnRestored(const QString& parent_code, bool is_group);

  /// What was applied lately: what was fetched before may be outdated by it.
  const CChangeJournal& GetChanges() const;
  /// Grows with every notice of a change made elsewhere.
  int GetNoticeCount() const;
  /// Records of the lists that the next OnGetPlanGroupListSucc() takes, made off this thread; others are made there.
  void OfferRecords(const ChildRecords& records);
  /// Whether the children of this row, or of the one with its code, were fetched in any model.
  bool IsOpened(const QModelIndex& index) const;
  /// Rows that the answer to an expansion lacked, since they were changed while it was under way; rows that are there
  /// stay as they are, and nothing is announced.
  void ShowLeftOut(const QModelIndex& index, const view_plugin_protocol::GetPlanGroupsResponse& groups,
                   const view_plugin_protocol::GetPlansInGroupResponse& plans);
  /// Brings the rows of one plan or group to what the host says of it now; later when it says nothing now. Blocks as a
  /// notice does.
  void Recheck(const QString& code, bool is_group);

 Q_SIGNALS:
  void SignalFinshExpandPublicView();
  void SignalFinshAddGroupPlanList();
  void SignalPlanStateChanged();
  void SignalAddPlanSucc(const QString& index_code);
  void SignalUpdatePlanSucc(const view_plugin_protocol::UpdatePlanRequest& plan_param);
  void SignalViewResourceDownFinish();
  void SignalDataDownloadFinished();
  /// Something was changed elsewhere: a plan or group, or the tree is loaded again. Before the rows follow.
  void SignalNoticed();

 public Q_SLOTS:
  void OnGetPlanGroupListSucc(const QModelIndex& index,
                              const view_plugin_protocol::GetPlanGroupsResponse& plan_group_list,
                              const view_plugin_protocol::GetPlansInGroupResponse& plan_list);
  void OnDeletePlanGroupPlanSucc(const QModelIndex& index);
  void OnAddPlanGroupSucc(const QModelIndex& parent_index, const view_plugin_protocol::PlanGroup& plan_group);
  void OnUpdatePlanGroupNameSucc(const QModelIndex& index, const QString& group_name);
  void OnAddPlanSucc(const view_plugin_protocol::AddPlanRequest& plan_param, const QString& get_plan_index_code);
  void OnUpdatePlanSucc(const view_plugin_protocol::UpdatePlanRequest& plan_param);
  void OnSetGroupNodeLoaded(const QString& index_code, bool is_loaded);
  void OnViewGroupNameChanged(const QString& index_code, const QString& new_name);
  void OnViewGroupChildAdded(const QString& group_index_code, ResourceData::ResourceType child_type);
  void OnViewGroupChildRemoved(const QString& child_index_code, ResourceData::ResourceType child_type);
  void OnViewChanged(const QString& view_index_code);
  void OnGetViewConfigData(view_plugin_protocol::GetClientDefaultViewConfigResponse& response_param);
  void OnSetViewConfigData(view_plugin_protocol::ClienDefaultViewConfigReponse& response_param);
  /// The whole tree changed: forgets everything and loads again.
  void OnUpdateViewModelData();
  void OnViewUiTreeInit();

 public:
  /// The last answers of the default-view calls.
  view_plugin_protocol::GetClientDefaultViewConfigResponse GetSeverResponseData() const;
  view_plugin_protocol::ClienDefaultViewConfigReponse GetSetConfigResponseData() const;

 private:
  friend class Wren::Base::CSingleton<CViewModelDataManager>;
  CViewModelDataManager();

  void makeModels();
  void registerOwnModels();
  bool isLoadAll() const;
  /// Whether rows may go under `group`: it was expanded, or everything is loaded at the start.
  bool takesChildren(const QStandardItem* group) const;
  /// How what is in groups that come in gets into the trees, where everything is loaded.
  enum class GroupContent {
    Announced,       // the host says what is there when an observer is registered
    AnnouncedAgain,  // also where there is an observer already, of a group that is not shown
    ReadNext         // it is read here
  };
  std::optional<RowRecords> fetchGroups(const QString& code, int theme, int32_t* error_kind, GroupContent content);
  std::optional<RowRecords> fetchPlans(const QString& code, int theme, int32_t* error_kind);
  void insertChildItems(const QString& code, int theme, GroupContent content);
  void insertBelow(const QString& code, const RowRecords& groups, const RowRecords& plans);
  void createObservers(const view_plugin_protocol::GetPlanGroupsResponse& groups,
                       const view_plugin_protocol::GetPlansInGroupResponse& plans);
  bool followMove(CStandardPlanModel* model, QStandardItem* row, const RowRecords::value_type& plan);
  void recheckTimedPlay();
  /// `parent`: where it stands now, as far as known.
  void noteChange(const QString& code, bool is_group, const std::string& parent);
  void noteNotice();
  bool fetchSubGroups(const QString& code, int theme, int32_t* error_kind, GroupContent content);
  /// As the family that the first model has it in.
  void showNewChildren(const QString& group_code, ResourceData::ResourceType child_type);
  void showNewChildren(const QString& group_code, int theme, ResourceData::ResourceType child_type);
  void repeatBelow(const QString& group_code, int theme, ResourceData::ResourceType child_type, int32_t error_kind);
  /// These three: how often the host is to be asked again, as of RepeatsAfter().
  int recheckGroup(const QString& code);
  int recheckPlan(const QString& code);
  int showMissingPlan(const QString& code);
  /// The parent of the row in the first model that has it.
  QModelIndex parentOf(const QString& code, bool is_group) const;
  bool isShown(const QString& code, bool is_group) const;
  void makeViews(const QList<view_plugin_protocol::PlanBasicInfo>& plans);
  CViewWatch* watchView(const std::string& code);
  std::shared_ptr<CViewGroup> makeViewGroup(const std::string& code, GroupContent content = GroupContent::Announced);
  void dropObservers();

  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace TarnPlanView
