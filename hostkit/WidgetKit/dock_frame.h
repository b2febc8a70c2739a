#pragma once

#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>
#include <vector>

#include "WidgetKit/slide_out_data.h"

namespace WidgetKit {

/// What ShowDockWidget() puts around a widget: a child of the window, above all else in it, with a shadow at its free
/// edge. Deletes itself when it has slid back or its content has gone. Thread: GUI.
class DockFrame : public QWidget {
  Q_OBJECT
 public:
  DockFrame(const CSlideOutData& what, QWidget* window);
  ~DockFrame() override;

  /// The frame around `widget`, sliding back or not; null when there is none.
  static DockFrame* Around(const QWidget* widget);

  void SlideOut();
  void SlideBack();
  bool IsSlidingBack() const { return sliding_back_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void WatchContent();
  void WatchPlace();
  void Slide(qreal to);
  void EndOfSlide();
  void PlaceAll();
  QRect FullPlace() const;
  QRect RuledPlace(int width) const;
  Qt::LayoutDirection Direction() const;
  void GiveFocus();
  bool Covers(const QWidget& widget) const;
  void KeepFocusInSight(QWidget* now);
  void ReleaseContent();
  void Vanish();

  QPointer<QWidget> content_;
  QPointer<QWidget> home_;  // the parent the content came from
  QPointer<QWidget> focus_before_;
  std::shared_ptr<tarn_ui_data_controller::CSlideWidgetPosRule> rule_;
  QVariantAnimation slide_;
  qreal out_ = 0;  // how far it is out, 0 to 1
  int width_ = 0;
  bool had_home_ = false;
  bool sliding_back_ = false;
};

}  // namespace WidgetKit
