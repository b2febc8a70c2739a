#pragma once

#include <QModelIndex>
#include <QObject>
#include <QTimer>
#include <list>
#include <optional>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "search_course.h"

namespace WidgetKit {
class CNewLocationViewWidget;
}

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
  CSearchPage(WidgetKit::CNewLocationViewWidget* field, CSearchPlanListView* list, QObject* parent);

  /// The plan that plays has an icon of its own among the hits.
  void SetPlaying(const QString& plan_code);
  /// Of the field; nothing for blanks. The hits of before stay until the answer has come.
  void Start();
  /// Start() for hits that are on show and may have become others. They stay what the user works with.
  void Repeat();
  /// What is under way, or is about to be as the user types, counts for nothing; the hits are about to go.
  void Cancel();
  /// Whether an answer is awaited; Start() has it take the keyboard to the hits.
  bool IsUnderWay() const { return course_.IsUnderWay(); }
  /// A result that was not asked for by Start() is taken as one for what stands in the field.
  void Show(const std::list<view_plugin_protocol::SearchedPlan>& plans);
  /// Once the page of hits is on top: from the field to the hits, where the user has asked for them.
  void TakeKeyboard();
  void RenewIcons();

  /// The hit that commands are about; invalid for none.
  QModelIndex Marked() const;
  /// The family of the marked hit, a ThemeNodeType; -1 for none.
  int MarkedFamily() const;
  /// The item type that the marked hit's row has in a tree; 0 for none.
  int MarkedType() const;
  /// The marked hit; a blank record for none. Its group's name is empty.
  view_plugin_protocol::TarnPlanViewInfo MarkedPlan() const;
  /// Marks the hit with this code; false when there is none (any more).
  bool Mark(const QString& plan_code);

 Q_SIGNALS:
  /// The answer of Start(), for Show().
  void SignalFound(const std::list<view_plugin_protocol::SearchedPlan>& plans);
  /// A part of the search, or all of it, has failed; what was found comes all the same. Not of a search that came by
  /// itself and found nothing: the page says so, and no tip at each pause.
  void SignalFailed(const QString& error);
  void SignalRetry();

 private:
  QString Text() const;
  void Ask(bool typed);
  void Send(const QString& text);
  void ShowWaiting(bool waiting);
  QStandardItem* MakeRow(const view_plugin_protocol::SearchedPlan& plan, const QString& searched) const;
  void OnFound(const std::list<view_plugin_protocol::SearchedPlan>& plans);
  bool IsAwaited(const SearchCourse::Question& question) const;
  void SayFailure(bool nothing_found);
  void ShowNoHits(const QString& searched);
  void Say(const QString& summary);

  WidgetKit::CNewLocationViewWidget* const field_;
  CSearchPlanListView* const list_;
  QStandardItemModel* const rows_;
  CEmptyState* const state_;
  CPlanSearch* const search_;
  QString playing_code_;
  SearchCourse course_;
  QString failure_;                                 // the host's words about what failed last
  std::optional<SearchCourse::Question> answered_;  // while its answer is being shown
  QTimer slow_;                                     // until it is said that an answer takes long
};

}  // namespace TarnPlanView
