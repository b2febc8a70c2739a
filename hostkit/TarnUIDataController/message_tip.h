#pragma once

#include <QFrame>

class QLabel;

namespace tarn_ui_data_controller {

/// One tip: a framed text with a mark, at the top of the window it was made for. Takes no focus and follows
/// the window's size. Thread: GUI.
class MessageTip : public QFrame {
  Q_OBJECT
 public:
  /// `distance`: pixels from the top of the window.
  MessageTip(const QString& text, int kind, int distance, QWidget* window);

  QString Text() const { return whole_text_; }
  /// How often it was said; shown from the second time on.
  void SetCount(int count);
  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void SignalClicked();
  /// The mouse moves over it: somebody may be reading. A mouse that only rests there does not count.
  void SignalLookedAt();
  /// Its window was hidden, and not by the desktop alone.
  void SignalWindowHidden();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  void Place();

  QLabel *text_ = nullptr, *count_ = nullptr;
  const QString whole_text_;
  const int distance_;
};

}  // namespace tarn_ui_data_controller
