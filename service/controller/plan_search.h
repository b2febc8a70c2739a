#pragma once

#include <QObject>
#include <QString>
#include <list>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/call_scope.h"

namespace TarnPlanView {

/// Searches the host's plans by a part of their names, public ones first, then the user's own, off the GUI thread.
/// A newer search, or Cancel(), makes the answer of an older one count for nothing. Thread: GUI.
class CPlanSearch : public QObject {
  Q_OBJECT
 public:
  explicit CPlanSearch(QObject* parent = nullptr);

  /// `text` is taken as it is.
  void Start(const QString& text);
  void Cancel();

 Q_SIGNALS:
  void SignalFound(const std::list<view_plugin_protocol::SearchedPlan>& plans);
  /// A part of the search failed, or all of it; comes before SignalFound(), once a search.
  void SignalFailed(const QString& error);

 private:
  HostCalls::CCallScope newest_;
};

}  // namespace TarnPlanView
