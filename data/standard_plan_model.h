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
  /// An empty model of the parameter's family. The data manager fills those it knows; any other is filled by
  /// LoadPlanModel().
  CStandardPlanModel(ViewManagerParam param, QObject* parent);
  ~CStandardPlanModel() override;

  /// As the model was made with.
  ViewManagerParam GetViewMangageParam() const;
  /// The family.
  ThemeNodeType GetViewManagerThemeNodeType() const;
  /// Id of the monitor.
  QString GetViewManagerMonitorId() const;

  /// Whether a group row may be chosen in the default-view chooser; at first not. Panels do not go by it.
  void SetViewGroupSeleted(bool selected);
  /// As set last.
  bool IsGroupCanSelected() const;

  /// The plan that plays in this model's panel; empty for none. Rows that are added later and carry this code are
  /// marked as playing; rows that are there are not touched.
  void SetPlayingIndexCode(const QString& code);
  /// As set last.
  QString GetPlayingIndexCode() const;

  /// Loads the first level once: at once when the configuration says load-all, else on a pool thread. Counts as
  /// loaded even when the call failed; UninitModelRootItem() makes it load again.
  void LoadPlanModel();
  /// Appends the placeholder (flag 9) and one root row for each group, without looking for duplicates.
  void AddRootNode(const view_plugin_protocol::GetPlanGroupsResponse& response);
  /// The same, of records that other models share. For the plug-in itself: hosts have no such records.
  void AddRootRows(const QVector<QExplicitlySharedDataPointer<const CRowRecord>>& roots);
  /// Removes all rows. A root answer that is still under way is dropped when it comes.
  void UninitModelRootItem();
  /// Emits SignalFinshAsynchronous(index, true).
  void FinishAddChildItems(const QModelIndex& index);

  /// Whether there is a row of this code: a group or root, or a plan. False for an empty code.
  bool FindItemByIndexCode(const QString& code, bool isGroup) const;
  /// That row, the first in depth-first order; invalid when there is none.
  QModelIndex FindIndexByIndexCode(const QString& code, bool isGroup) const;
  /// The same as an item, which the model owns; null when there is none.
  QStandardItem* FindTargetItemByIndexCode(const QString& code, bool isGroup) const;
  /// The row of this model that stands for `index`, which may belong to another model or a proxy: the same row when it
  /// is this model's, else the first row with its code. Null when there is none.
  QStandardItem* FindItemByIndex(const QModelIndex& index) const;
  /// Those of the records, plans' or groups', that the model has no row for. For the plug-in itself.
  QVector<QExplicitlySharedDataPointer<const CRowRecord>> WithoutRow(
      const QVector<QExplicitlySharedDataPointer<const CRowRecord>>& records) const;
  /// The first row whose role 673 is true, or null.
  QStandardItem* FindItemPlanPlaying() const;

  QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
  QMap<int, QVariant> itemData(const QModelIndex& index) const override;
  bool setItemData(const QModelIndex& index, const QMap<int, QVariant>& roles) override;
  /// Takes all roles from a row. Hides the base's call, which would leave what the record says.
  bool clearItemData(const QModelIndex& index);
  bool event(QEvent* event) override;

 Q_SIGNALS:
  /// The answer to the asynchronous root load has come; an empty one when it has failed. The rows are there when it
  /// reaches others.
  void SignalGetRootPlanGroupSucc(const view_plugin_protocol::GetPlanGroupsResponse& lst_group);
  /// The root rows of a panel are complete. To be emitted by the one who fills the model; the controller passes it on.
  void SignalFinshCreateRootPlan();
  /// The public branch has finished expanding. Not emitted by the model itself.
  void SignalFinshExpandPublicView();
  /// Children of `index`, a row of the model whose tree has asked, were appended here as well, where this model has
  /// that row. It is to be expanded with `b_expand`, which is true.
  void SignalFinshAsynchronous(const QModelIndex& index, bool b_expand);
  /// Children of `index` were appended, without expanding. Not emitted by the model itself.
  void SignalLoadFinishNotExpand(const QModelIndex& index);

 public Q_SLOTS:
  /// As AddRootNode().
  void OnAddRootPlanGroup(const view_plugin_protocol::GetPlanGroupsResponse& lst_group);

 private:
  void LoadRootNode();
  static QStandardItem* makePlaceholder();
  void storeEverything(const QModelIndex& index);

  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace TarnPlanView
