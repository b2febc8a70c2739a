#pragma once

#include <QWidget>

#include "host_export.h"

namespace tarn_ui_data_controller {

/// Styled box in a frameless window of its own. Esc closes it. Thread: GUI.
class TARN_HOST_EXPORT CQssWidgetBox : public QWidget {
  Q_OBJECT
 public:
  /// `flag`: 0 a plain box; 1 one that stays above all windows.
  explicit CQssWidgetBox(QWidget* parent = nullptr, int flag = 0);
  ~CQssWidgetBox() override;

 Q_SIGNALS:
  /// The box has been shown or hidden; not for a minimised window.
  void signalVisiblityChanged(bool visible);

 public Q_SLOTS:
  /// Closes the box. Esc comes here, too: a box that asks before it closes overrides it.
  virtual void CloseBox();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tarn_ui_data_controller
