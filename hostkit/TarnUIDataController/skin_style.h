#pragma once

#include <QProxyStyle>

namespace tarn_ui_data_controller {

/// What a style sheet cannot say, for all windows: disabled icons are faint on any ground, the arrow of a selected row
/// shows on the selection, so does the mark of the current row, and tool tips wrap. Thread: GUI.
class SkinStyle : public QProxyStyle {
  Q_OBJECT
 public:
  SkinStyle();

  QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap, const QStyleOption* option) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void polish(QWidget* widget) override;
  using QProxyStyle::polish;
};

}  // namespace tarn_ui_data_controller
