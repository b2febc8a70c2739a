#pragma once

#include <QObject>

class QLabel;

namespace tarn_ui_data_controller {

/// Wraps the text of the tool tip that it belongs to, also where it has no spaces, and keeps it on its screen. A tool
/// tip of our own holds no markup but where that stands for text that looks like some. Thread: GUI.
class ToolTipFitter : public QObject {
  Q_OBJECT
 public:
  /// `tip`: the label of a tool tip. Again for the same label does nothing.
  static void Install(QWidget* tip);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit ToolTipFitter(QLabel* tip);
  void Fit();

  QLabel* const tip_;
  bool fitting_ = false;
};

}  // namespace tarn_ui_data_controller
