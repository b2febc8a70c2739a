#pragma once

#include <QKeySequence>
#include <QObject>

namespace TarnClient {

/// The key to lock the desk, wherever in the client it is pressed: dialogs, forms and menus know nothing of the
/// windows' commands. Not where somebody is asked who it is. Thread: GUI.
class CLockKey : public QObject {
  Q_OBJECT
 public:
  CLockKey(const QKeySequence& key, QObject* parent);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  /// From the event loop.
  void SignalPressed();

 private:
  const QKeySequence key_;
};

}  // namespace TarnClient
