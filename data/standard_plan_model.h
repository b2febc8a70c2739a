#pragma once

#include <QExplicitlySharedDataPointer>
#include <QVector>
#include <memory>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "MarUIControl/standard_item_model.h"
#include "tarn_plan_view_export.h"
#include "view_manager_param.h"

namespace TarnPlanView {

class CRowRecord;

/// The rows of one plan tree: roots, groups and plans, and the placeholder row where the parameter asks for it.
///
/// Look-ups search from the first row through all levels and give the first hit in depth-first order; their cost does
/// not grow with the model. Owns its rows. Thread: GUI.
class TARNPLANVIEW_EXPORT CStandardPlanModel : public MarUIControl::CStandardItemModel {
  Q_OBJECT
 public:
  CStandardPlanModel(ViewManagerParam param, QObject* parent);
  ~CStandardPlanModel() override;

  ViewManagerParam GetViewMangageParam() const;
  ThemeNodeType GetViewManagerThemeNodeType() const;
  QString GetViewManagerMonitorId() const;

  /// Whether a group row may become the current selection of a chooser.
  void SetViewGroupSeleted(bool selected);
  bool IsGroupCanSelected() const;

  /// The plan that plays in this model's panel; empty for none. Rows that are added later and carry this code are
  /// marked as playing; rows that are there are not touched.
  void SetPlayingIndexCode(const QString& code);
  QString GetPlayingIndexCode() const;

  /// Loads the first level once: at once when the configuration says load-all, else on a pool thread. Counts as
  /// loaded even when the call failed; UninitModelRootItem() makes it load again.
  void LoadPlanModel();
  /// Appends the placeholder (flag 9) and one root row for each group, without looking for duplicates.
  void AddRootNode(const view_plugin_protocol::GetPlanGroupsResponse& response);
  /// The same, of records that other models share.
  void AddRootRows(const QVector<QExplicitlySharedDataPointer<const CRowRecord>>& roots);
  /// Removes all rows. A root answer that is still under way is dropped when it comes.
  void UninitModelRootItem();
  /// Emits SignalFinshAsynchronous(index, true).
  void FinishAddChildItems(const QModelIndex& index);

  /// False for an empty code.
  bool FindItemByIndexCode(const QString& code, bool isGroup) const;
  /// Invalid when there is none.
  QModelIndex FindIndexByIndexCode(const QString& code, bool isGroup) const;
  QStandardItem* FindTargetItemByIndexCode(const QString& code, bool isGroup) const;
  /// The row of this model that stands for `index`, which may belong to another model or a proxy: the same row when it
  /// is this model's, else the first row with its code. Null when there is none.
  QStandardItem* FindItemByIndex(const QModelIndex& index) const;
  /// The first row whose role 673 is true, or null.
  QStandardItem* FindItemPlanPlaying() const;

  QMap<int, QVariant> itemData(const QModelIndex& index) const override;
  bool setItemData(const QModelIndex& index, const QMap<int, QVariant>& roles) override;
  bool clearItemData(const QModelIndex& index);
  bool event(QEvent* event) override;

 Q_SIGNALS:
  /// The answer to the asynchronous root load has come.
  void SignalGetRootPlanGroupSucc(const view_plugin_protocol::GetPlanGroupsResponse& lst_group);
  /// The root rows of a panel are complete.
  void SignalFinshCreateRootPlan();
  /// The public branch has finished expanding.
  void SignalFinshExpandPublicView();
  /// Children of `index` (of any model) were appended.
  void SignalFinshAsynchronous(const QModelIndex& index, bool b_expand);
  /// Children of `index` were appended, without expanding.
  void SignalLoadFinishNotExpand(const QModelIndex& index);

 public Q_SLOTS:
  void OnAddRootPlanGroup(const view_plugin_protocol::GetPlanGroupsResponse& lst_group);

 private:
  void LoadRootNode();
  static QStandardItem* makePlaceholder();
  void storeEverything(const QModelIndex& index);

  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace TarnPlanView
