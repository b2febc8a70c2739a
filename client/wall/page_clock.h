#pragma once

#include <QObject>
#include <QTimer>

#include "plan_rules/plan_limits.h"

namespace TarnClient {

/// Says when a page or a plan has been on for its time. Another clock may take its place. Thread: GUI.
class CPageClock : public QObject {
  Q_OBJECT
 public:
  static constexpr int kLeastSeconds = 1;
  /// The time that something really stays which is to stay for `seconds`.
  static int Bounded(qint64 seconds) {
    return static_cast<int>(qBound(qint64{kLeastSeconds}, seconds, qint64{view_plugin_protocol::kMaxDwellSeconds}));
  }

  explicit CPageClock(QObject* parent = nullptr);

  /// A page has come on: it stays for `seconds`, at least one and at most a day. A pause goes on.
  virtual void Begin(int seconds);
  virtual void Stop();
  /// A paused page keeps what was left of its time.
  void SetPaused(bool paused);
  bool IsPaused() const { return paused_; }
  /// Until the time is over; 0 when no page is on.
  virtual int MsLeft() const;
  /// Whole seconds, rounded up.
  int SecondsLeft() const { return (MsLeft() + 999) / 1000; }

 Q_SIGNALS:
  /// The page's time is over.
  void SignalTurn();

 private:
  QTimer timer_;
  int left_ms_ = 0;  // while paused
  bool paused_ = false;
};

}  // namespace TarnClient
