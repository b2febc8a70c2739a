#pragma once

#include <QModelIndex>
#include <QObject>
#include <QPointer>
#include <list>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "standard_plan_model.h"

class QLineEdit;
class QStandardItem;
class QStandardItemModel;

namespace TarnPlanView {

class CEmptyState;
class CPlanSearch;
class CSearchPlanListView;

/// Searches the host's plans for what stands in the field and shows the hits in the list, or why there are none.
/// Thread: GUI.
class CSearchPage : public QObject {
  Q_OBJECT
 public:
  CSearchPage(QLineEdit* field, CSearchPlanListView* list, QObject* parent);

  /// Its loaded groups name where a hit stands. Not owned.
  void SetModel(CStandardPlanModel* model) { plans_ = model; }
  /// The plan that plays has an icon of its own among the hits.
  void SetPlaying(const QString& plan_code);
  /// Of the field; nothing for blanks.
  void Start();
  void Cancel();
  /// A result that was not asked for by Start() is taken as one for what stands in the field.
  void Show(const std::list<view_plugin_protocol::SearchedPlan>& plans);
  void RenewIcons();

  /// The hit that commands are about; invalid for none.
  QModelIndex Marked() const;
  /// The item type that the marked hit's row has in a tree; 0 for none.
  int MarkedType() const;
  /// Marks the hit with this code; false when there is none (any more).
  bool Mark(const QString& plan_code);

 Q_SIGNALS:
  /// The answer of Start(), for Show().
  void SignalFound(const std::list<view_plugin_protocol::SearchedPlan>& plans);
  /// A part of the search, or all of it, has failed; what was found comes all the same.
  void SignalFailed(const QString& error);
  void SignalRetry();

 private:
  QString Text() const;
  QString PathOf(const view_plugin_protocol::SearchedPlan& plan) const;
  QStandardItem* MakeRow(const view_plugin_protocol::SearchedPlan& plan, const QString& searched) const;
  void OnFound(const std::list<view_plugin_protocol::SearchedPlan>& plans);
  void ShowNoHits();

  QLineEdit* const field_;
  CSearchPlanListView* const list_;
  QStandardItemModel* const rows_;
  CEmptyState* const state_;
  CPlanSearch* const search_;
  QPointer<CStandardPlanModel> plans_;
  QString playing_code_;
  QString searched_text_, answered_text_;  // of the search that is under way, and of the one that is being shown
  bool failed_ = false;
};

}  // namespace TarnPlanView
