#pragma once

#include <QObject>

#include "host_calls/call_scope.h"

namespace TarnClient {

class CPlayHistory;
struct PlayedPlan;

/// Asks which of the played plans are gone by now, or not permitted any more, and where they stand, and has the history
/// say so. Thread: GUI; the service is asked on the thread pool.
class CHistoryCheck : public QObject {
  Q_OBJECT
 public:
  /// `history` is not owned and outlives this.
  CHistoryCheck(CPlayHistory* history, QObject* parent);

  /// What the service does not answer for stays as it was.
  void Look();
  /// Names all groups above a plan of this family, whose list has the title; of most only the innermost is known.
  void FindPlace(const PlayedPlan& plan, int family, const QString& title);
  /// Another user has logged in: an answer that is under way is not about him.
  void Drop();

 private:
  CPlayHistory* const history_;
  HostCalls::CCallScope question_, places_;
};

}  // namespace TarnClient
