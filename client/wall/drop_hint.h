#pragma once

#include <QWidget>

namespace TarnClient {

/// Lies over the wall while something that it can play is dragged over it. Thread: GUI.
class CDropHint : public QWidget {
  Q_OBJECT
 public:
  explicit CDropHint(QWidget* parent);

  /// Covers `area` of the parent.
  void ShowOver(const QRect& area, const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text_;
};

}  // namespace TarnClient
