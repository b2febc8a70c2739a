#pragma once

#include <QEvent>
#include <QWidget>

/// Whether a widget has painted since Forget().
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QWidget* widget) { widget->installEventFilter(this); }
  void Forget() { painted_ = false; }
  bool HasPainted() const { return painted_; }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    painted_ = painted_ || event->type() == QEvent::Paint;
    return false;
  }

 private:
  bool painted_ = false;
};
