#pragma once

#include <QLabel>
#include <QTimer>

namespace TarnClient {

/// Says over the wall what is still on its way to it. Not at once, since most of it is there in a moment. Thread: GUI.
class CFetchSign : public QLabel {
  Q_OBJECT
 public:
  explicit CFetchSign(QWidget* parent);

  /// What is on its way from now on; an empty text when nothing is.
  void Await(const QString& text);
  /// Stands at the top of `area` of the parent.
  void Place(const QRect& area);

 private:
  void Appear();

  QString text_;
  QRect area_;
  QTimer delay_{this};
};

}  // namespace TarnClient
