#pragma once

#include <QFrame>

class QLabel;

namespace tarn_ui_data_controller {

/// One tip: a framed text with a mark, at the top of the window it was made for. Takes neither focus nor clicks and
/// follows the window's size. Thread: GUI.
class MessageTip : public QFrame {
  Q_OBJECT
 public:
  /// `distance`: pixels from the top of the window.
  MessageTip(const QString& text, int kind, int distance, QWidget* window);

  QString Text() const;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Place();

  QLabel* text_ = nullptr;
  const int distance_;
};

}  // namespace tarn_ui_data_controller
