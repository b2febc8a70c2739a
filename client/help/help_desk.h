#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

#include "MarUIControl/key_guide.h"

class QDialog;
class QWidget;

namespace TarnClient {

/// F1, wherever in the client: the list of keys over what is active. Over a modal dialog it belongs to that, or it
/// would be blocked; over a box that closes when it loses the activation it is shown without taking it, and Esc closes
/// the list before the box. Menus and other pop-ups close. Thread: GUI.
class CHelpDesk : public QObject {
  Q_OBJECT
 public:
  /// `keys` is asked at each opening. `window` has F1 as a command of its own; other windows' F1 is heard here.
  CHelpDesk(std::function<QList<MarUIControl::KeyEntry>()> keys, QWidget* window);
  ~CHelpDesk() override;

  void Open();
  /// Null while it is closed.
  QDialog* Window() const;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void OpenOverMenus();

  const std::function<QList<MarUIControl::KeyEntry>()> keys_;
  QWidget* const window_;
  QPointer<QDialog> list_;
};

}  // namespace TarnClient
