#include "WidgetKit/dock_frame.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QStyle>

#include "TarnUIDataController/skin_loader.h"

namespace WidgetKit {

namespace {

constexpr int kSlideMs = 180;
constexpr int kShadow = 8;

bool TakesFocus(const QWidget& widget) {
  return widget.isEnabled() && widget.isVisible() && (widget.focusPolicy() & Qt::TabFocus);
}

QWidget* FirstFocus(QWidget* content) {
  if (TakesFocus(*content)) {
    return content;
  }
  for (QWidget* next = content->nextInFocusChain(); next != content; next = next->nextInFocusChain()) {
    if (content->isAncestorOf(next) && TakesFocus(*next)) {
      return next;
    }
  }
  return content;
}

}  // namespace

DockFrame::DockFrame(const CSlideOutData& what, QWidget* window)
    : QWidget(window),
      content_(what.GetVal_ptr_dock_widget()),
      home_(content_->parentWidget()),
      focus_before_(window->focusWidget()),
      rule_(what.GetVal_ptr_dock_pos_rule()),
      width_(what.GetVal_slide_width()),
      had_home_(home_) {
  setObjectName(QStringLiteral("dock_frame"));
  slide_.setEasingCurve(QEasingCurve::OutCubic);
  connect(&slide_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
    out_ = value.toReal();
    PlaceAll();
  });
  connect(&slide_, &QVariantAnimation::finished, this, &DockFrame::EndOfSlide);
  content_->setParent(this);
  WatchContent();
  WatchPlace();
}

DockFrame::~DockFrame() {
  ReleaseContent();
}

DockFrame* DockFrame::Around(const QWidget* widget) {
  return widget ? qobject_cast<DockFrame*>(widget->parentWidget()) : nullptr;
}

void DockFrame::WatchContent() {
  content_->installEventFilter(this);
  // Who says so is half gone already: the pointer still stands, but nothing of it may be touched any more.
  connect(content_, &QObject::destroyed, this, [this] {
    content_.clear();
    Vanish();
  });
  if (home_) {
    // Its owner ends while the content stands here: the content ends with it, as it would have there.
    connect(home_, &QObject::destroyed, this, [this] {
      home_.clear();
      focus_before_.clear();  // most likely one of its own
      delete content_;
    });
  }
}

void DockFrame::WatchPlace() {
  window()->installEventFilter(this);
  QWidget* beside = rule_ ? rule_->PosAttachTo() : nullptr;
  for (; beside && !beside->isWindow(); beside = beside->parentWidget()) {
    beside->installEventFilter(this);
  }
}

void DockFrame::SlideOut() {
  sliding_back_ = false;
  PlaceAll();
  content_->show();
  show();
  raise();
  GiveFocus();
  Slide(1);
}

void DockFrame::SlideBack() {
  sliding_back_ = true;
  Slide(0);
}

void DockFrame::Slide(qreal to) {
  slide_.stop();
  const bool animated = parentWidget()->isVisible() && style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
  if (!animated) {
    out_ = to;
    PlaceAll();
    EndOfSlide();
    return;
  }
  slide_.setStartValue(out_);
  slide_.setEndValue(to);
  slide_.setDuration(kSlideMs);
  slide_.start();
}

void DockFrame::EndOfSlide() {
  if (sliding_back_) {
    Vanish();
  }
}

QRect DockFrame::FullPlace() const {
  const int width = qMax(0, qMin(width_, parentWidget()->width()));
  const QRect ruled = rule_ ? rule_->Place(width) : QRect();
  return ruled.isEmpty() ? QRect(parentWidget()->width() - width, 0, width, parentWidget()->height()) : ruled;
}

bool DockFrame::FromLeft() const {
  return rule_ && !rule_->Place(width_).isEmpty();
}

// It grows out of the edge it clings to and carries the content along, so that it never covers what lies behind that
// edge.
void DockFrame::PlaceAll() {
  const QRect full = FullPlace();
  const int shown = qRound(full.width() * out_);
  const int left = FromLeft() ? full.left() : full.right() + 1 - shown - kShadow;
  setGeometry(left, full.top(), shown + kShadow, full.height());
  if (content_) {
    content_->setGeometry(FromLeft() ? shown - full.width() : kShadow, 0, full.width(), full.height());
  }
  update();
}

void DockFrame::GiveFocus() {
  FirstFocus(content_)->setFocus(Qt::OtherFocusReason);
}

void DockFrame::ReleaseContent() {
  if (!content_) {
    return;
  }
  QWidget* content = content_;
  content_.clear();
  content->removeEventFilter(this);
  disconnect(content, nullptr, this, nullptr);
  content->hide();
  if (home_ || !had_home_) {
    content->setParent(home_);
  }
}

void DockFrame::Vanish() {
  slide_.stop();
  const bool had_focus = isAncestorOf(QApplication::focusWidget());
  ReleaseContent();
  hide();
  if (had_focus && focus_before_) {
    focus_before_->setFocus(Qt::OtherFocusReason);
  }
  deleteLater();
}

bool DockFrame::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (watched == content_) {
    if (type == QEvent::HideToParent) {
      Vanish();  // the content has closed itself
    }
  } else if (type == QEvent::Resize || type == QEvent::Move || type == QEvent::Show || type == QEvent::Hide) {
    PlaceAll();
  }
  return QWidget::eventFilter(watched, event);
}

void DockFrame::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int x = FromLeft() ? width() - kShadow : 0;
  QLinearGradient shade(FromLeft() ? x : kShadow, 0, FromLeft() ? width() : 0, 0);
  shade.setColorAt(0, QColor(0, 0, 0, 110));
  shade.setColorAt(1, QColor(0, 0, 0, 0));
  const auto& skin = tarn_ui_data_controller::CSkinLoader::Instance();
  painter.fillRect(rect().adjusted(FromLeft() ? 0 : kShadow, 0, FromLeft() ? -kShadow : 0, 0),
                   skin.GetColor(QStringLiteral("surface")));
  painter.fillRect(x, 0, kShadow, height(), shade);
  painter.fillRect(FromLeft() ? x : kShadow - 1, 0, 1, height(), skin.GetColor(QStringLiteral("control_border")));
}

}  // namespace WidgetKit
