#pragma once

#include <QObject>
#include <QTimer>

namespace TarnClient {

/// Says when a page or a plan has been on for its time. Another clock may take its place. Thread: GUI.
class CPageClock : public QObject {
  Q_OBJECT
 public:
  explicit CPageClock(QObject* parent = nullptr);

  /// A page has come on: it stays for `seconds`, at least one and at most a day. A pause goes on.
  virtual void Begin(int seconds);
  virtual void Stop();
  /// A paused page keeps what was left of its time.
  void SetPaused(bool paused);
  bool IsPaused() const { return paused_; }
  /// Whole seconds until the page turns, rounded up; 0 when no page is on.
  int SecondsLeft() const;

 Q_SIGNALS:
  /// The page's time is over.
  void SignalTurn();

 private:
  QTimer timer_;
  int left_ms_ = 0;  // while paused
  bool paused_ = false;
};

}  // namespace TarnClient
