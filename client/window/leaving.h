#pragma once

#include <QObject>
#include <QVector>
#include <functional>

namespace TarnClient {

class CWallDesk;

/// What has to wait while plans are edited and not saved: the end of a window or of the client, another user. One thing
/// waits at the most, the latest. Thread: GUI.
class CLeaving : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;

  /// Whether these may be left. When the user has something saved first, `again` is called once that is done.
  bool MayLeave(const QVector<CWallDesk*>& desks, std::function<void()> again);
  /// What was edited there, and kept the user, is saved.
  void OnSaved();

 private:
  std::function<void()> again_;
};

}  // namespace TarnClient
