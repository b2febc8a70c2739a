#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>
#include <functional>
#include <memory>

#include "log_in/lock_filter.h"

class QWidget;

namespace TarnClient {

class CDeskWindow;

/// The lock of a desk with all its walls: pictures go on, and of what could be done only playing, holding and turning
/// pages is left. What is being edited stays as it is, a question that waits is answered by Cancel. Not kept over the
/// end of the client: a start asks for the password itself. Thread: GUI.
class CDeskLock : public QObject {
  Q_OBJECT
 public:
  using Windows = std::function<QVector<CDeskWindow*>()>;

  CDeskLock(Windows windows, QObject* parent);

  bool IsLocked() const { return filter_ != nullptr; }
  /// The text stands on every wall; also to say something else on a desk that is locked.
  void Lock(const QString& text);
  /// What was open beside the walls comes back.
  void Unlock();
  /// To another user, who sees nothing of that.
  void HandOver();

 private:
  DeskPlace PlaceOf(const QWidget* widget) const;
  bool IsOn(const QObject* command) const;
  void End();
  void ShowSigns(const QString& text);
  void HideOthers();

  const Windows windows_;
  std::unique_ptr<CLockFilter> filter_;
  QVector<QPointer<QWidget>> hidden_;  // that were open beside the walls
};

}  // namespace TarnClient
