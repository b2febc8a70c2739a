#pragma once

#include <QObject>
#include <functional>

#include "log_in/lock_rules.h"

class QInputEvent;
class QKeyEvent;
class QWidget;

namespace TarnClient {

/// Keeps from the whole client what a locked desk does not let through, while it exists. Thread: GUI.
class CLockFilter : public QObject {
  Q_OBJECT
 public:
  using PlaceOf = std::function<DeskPlace(const QWidget*)>;
  using IsOn = std::function<bool(const QObject* command)>;  // an action or a shortcut

  CLockFilter(PlaceOf place_of, IsOn is_on, QObject* parent);
  ~CLockFilter() override;

  bool eventFilter(QObject* watched, QEvent* event) override;

  static DeskInput InputOf(const QKeyEvent& key);

 Q_SIGNALS:
  /// Somebody has tried something else.
  void SignalRefused(QWidget* window);

 private:
  static bool IsIdle(int key);
  void ClosePopup(QWidget* window) const;
  bool Refuses(const QWidget* target, QEvent* event) const;

  const PlaceOf place_of_;
  const IsOn is_on_;
};

}  // namespace TarnClient
