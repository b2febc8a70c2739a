#pragma once

#include <QObject>
#include <QStandardItemModel>
#include <functional>
#include <list>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plan_search.h"

namespace TarnPlanView {

/// Item type of the row above what was found: it stands before all others, and is nothing that could be chosen.
constexpr int kFoundPlansItem = -2;

/// What the host finds for a text among the plans whose rows are not loaded: one row on top that says how the search
/// stands, and the plans below it. No rows while nothing is looked for. Thread: GUI.
class CFoundPlans : public QObject {
  Q_OBJECT
 public:
  using IsLoaded = std::function<bool(const QString& plan_code)>;
  CFoundPlans(IsLoaded is_loaded, QObject* parent);
  ~CFoundPlans() override;

  QStandardItemModel* Rows() { return &rows_; }
  /// The text has changed: what was found for another one goes, and an answer that is under way counts for nothing.
  void SetText(const QString& text);
  /// The same text is to be asked for once more.
  void Renew();
  /// Asks the host, when that is still to be done: once the loaded rows have been looked through, so that what is found
  /// there comes first.
  void Ask();
  bool IsAsking() const { return state_ == Asking; }
  /// Takes out what has its own row by now.
  void DropLoaded();

 Q_SIGNALS:
  /// The rows are those of the present state.
  void SignalChanged();

 private:
  enum State { Idle, Asking, Answered, Failed };

  void Enter(State state, const QString& reason = QString());
  void OnFound(const std::list<view_plugin_protocol::SearchedPlan>& plans);
  bool IsOffered(const view_plugin_protocol::SearchedPlan& plan) const;
  void ShowState();
  QString StateText() const;
  QString CountText() const;

  const IsLoaded is_loaded_;
  CPlanSearch search_;
  QStandardItemModel rows_;
  QString text_, reason_;
  State state_ = Idle;
  bool is_sent_ = false;
};

}  // namespace TarnPlanView
