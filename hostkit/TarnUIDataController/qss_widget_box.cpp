#include "TarnUIDataController/qss_widget_box.h"

#include <QHideEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>

namespace tarn_ui_data_controller {

namespace {

Qt::WindowFlags FlagsFor(int flag) {
  Qt::WindowFlags flags = Qt::Dialog | Qt::FramelessWindowHint;
  flags.setFlag(Qt::WindowStaysOnTopHint, flag == 1);
  return flags;
}

}  // namespace

CQssWidgetBox::CQssWidgetBox(QWidget* parent, int flag) : QWidget(parent, FlagsFor(flag)) {
  setProperty("styled_box", true);
}

CQssWidgetBox::~CQssWidgetBox() = default;

void CQssWidgetBox::CloseBox() {
  close();
}

void CQssWidgetBox::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) {
    Q_EMIT signalVisiblityChanged(true);
  }
}

void CQssWidgetBox::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (!event->spontaneous()) {  // a minimised window is still there
    Q_EMIT signalVisiblityChanged(false);
  }
}

void CQssWidgetBox::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel)) {
    CloseBox();
    return;
  }
  QWidget::keyPressEvent(event);
}

void CQssWidgetBox::paintEvent(QPaintEvent*) {
  QStyleOption option;
  option.initFrom(this);
  QPainter painter(this);
  style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

}  // namespace tarn_ui_data_controller
