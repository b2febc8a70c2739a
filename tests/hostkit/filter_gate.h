#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <functional>
#include <utility>

namespace TarnTest {

/// Stands before every step that a camera tree's filter takes: `may_go` is asked each time, and when it returns false
/// the step waits for the next turn of the event loop.
class CFilterGate : public QObject {
 public:
  explicit CFilterGate(std::function<bool()> may_go) : may_go_(std::move(may_go)) { qApp->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    return event->type() == QEvent::Timer && watched->inherits("ResourceTreeKit::CCameraFilter") && !may_go_();
  }

 private:
  const std::function<bool()> may_go_;
};

}  // namespace TarnTest
