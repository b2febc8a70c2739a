#pragma once

#include <TarnPlanView/standard_plan_model.h>
#include <TarnPlanView/standard_view_controller.h>

#include <QPersistentModelIndex>
#include <QPointer>
#include <QSet>
#include <QWidget>
#include <memory>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "MarUIControl/nomal_message.h"

class QLabel;
class QSortFilterProxyModel;

namespace TarnPlanView {
class CViewSortFilterProxyModelExport;
}  // namespace TarnPlanView

namespace TarnClient {

class CPlanTree;

/// One family of plans as a tree. What was expanded expands again after the plan data was loaded anew.
/// Made when the plan data is ready, destroyed before the plug-in is taken down. Thread: GUI.
class CPlanPane : public QWidget {
  Q_OBJECT
 public:
  CPlanPane(TarnPlanView::ThemeNodeType theme, const QString& empty_text, QWidget* parent = nullptr);
  ~CPlanPane() override;

  /// Scrolls to the plan's row and makes it the current one, when the row is loaded.
  void Reveal(const QString& plan_code);
  CPlanTree* Tree() const { return tree_; }
  TarnPlanView::CStandardPlanModel* Model() const { return model_; }
  /// Null when the plug-in has no such model.
  TarnPlanView::CStandardViewController* Controller() const { return controller_; }

 private:
  void BuildModels(TarnPlanView::ThemeNodeType theme);
  void ConnectTree();
  void TellOfChanges();
  void FinishExpand(const QModelIndex& index, bool expand);
  void OnRowsInserted(const QModelIndex& parent, int first, int last);
  void ExpandAgain();
  void RememberExpanded(const QModelIndex& index, bool expanded);
  void ShowMessage(const QString& text, MarUIControl::CNomalMessage::AlertState state);
  void RenewEmptyText();
  bool HasNothingToShow() const;

  CPlanTree* tree_ = nullptr;
  QLabel* empty_ = nullptr;
  QPointer<TarnPlanView::CStandardPlanModel> model_;
  QPointer<TarnPlanView::CStandardViewController> controller_;
  TarnPlanView::CViewSortFilterProxyModelExport* proxy_export_ = nullptr;
  QSortFilterProxyModel* proxy_ = nullptr;
  QSet<QString> expanded_codes_;
  QList<QPersistentModelIndex> to_expand_;
};

}  // namespace TarnClient
