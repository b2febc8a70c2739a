#include "WidgetKit/dock_frame.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <utility>

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

// Fades out towards the free edge.
QLinearGradient Shade(const QRect& place, Qt::LayoutDirection direction) {
  int begin = place.left(), end = place.right() + 1;
  if (direction == Qt::RightToLeft) {
    std::swap(begin, end);
  }
  QLinearGradient shade(begin, 0, end, 0);
  shade.setColorAt(0, QColor(0, 0, 0, 110));
  shade.setColorAt(1, QColor(0, 0, 0, 0));
  return shade;
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
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { KeepFocusInSight(now); });
  WatchContent();
  WatchPlace();
}

DockFrame::~DockFrame() {
  ReleaseContent();
}

DockFrame* DockFrame::Around(const QWidget* widget) {
  if (!widget) {
    return nullptr;
  }
  return qobject_cast<DockFrame*>(widget->parentWidget());
}

void DockFrame::WatchContent() {
  content_->installEventFilter(this);
  // It is half gone by now: the pointer still stands, but nothing of it may be touched any more.
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
  if (!rule_) {
    return;
  }
  for (QWidget* beside = rule_->PosAttachTo(); beside && !beside->isWindow(); beside = beside->parentWidget()) {
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
  const int width = qBound(0, width_, parentWidget()->width());
  const QRect ruled = RuledPlace(width);
  if (!ruled.isEmpty()) {
    return ruled;
  }
  return QRect(parentWidget()->width() - width, 0, width, parentWidget()->height());
}

QRect DockFrame::RuledPlace(int width) const {
  if (!rule_) {
    return {};
  }
  return rule_->Place(width);
}

// A place that the rule gives is slid into from the left, the window's right edge from the right. What follows is
// worked out for the first and mirrored for the second.
Qt::LayoutDirection DockFrame::Direction() const {
  return RuledPlace(width_).isEmpty() ? Qt::RightToLeft : Qt::LeftToRight;
}

// It grows out of its fixed edge and carries the content along, so that it never covers what lies behind that edge.
void DockFrame::PlaceAll() {
  const QRect full = FullPlace();
  const int shown = qRound(full.width() * out_);
  const QRect grown(full.left(), full.top(), shown + kShadow, full.height());
  setGeometry(QStyle::visualRect(Direction(), full, grown));
  if (content_) {
    const QRect inside(shown - full.width(), 0, full.width(), full.height());
    content_->setGeometry(QStyle::visualRect(Direction(), rect(), inside));
  }
  update();
}

void DockFrame::GiveFocus() {
  FirstFocus(content_)->setFocus(Qt::OtherFocusReason);
}

bool DockFrame::Covers(const QWidget& widget) const {
  const bool is_other = widget.window() == window() && !widget.isWindow() && !isAncestorOf(&widget);
  return is_other && geometry().contains(QRect(widget.mapTo(parentWidget(), QPoint()), widget.size()));
}

// Tab goes over what lies wholly below this: its keys would act on what is not seen.
void DockFrame::KeepFocusInSight(QWidget* now) {
  if (sliding_back_ || isHidden() || !now || !Covers(*now)) {
    return;
  }
  const bool back = QGuiApplication::keyboardModifiers() & Qt::ShiftModifier;
  const auto after = [back](const QWidget* widget) {
    if (back) {
      return widget->previousInFocusChain();
    }
    return widget->nextInFocusChain();
  };
  QWidget* next = after(now);
  while (next != now && (!TakesFocus(*next) || next->isWindow() || Covers(*next))) {
    next = after(next);
  }
  next->setFocus(back ? Qt::BacktabFocusReason : Qt::TabFocusReason);
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
  const Qt::LayoutDirection direction = Direction();
  const auto mirrored = [&](int left, int width) {
    return QStyle::visualRect(direction, rect(), QRect(left, 0, width, height()));
  };
  const int free_edge = width() - kShadow;
  const auto& skin = tarn_ui_data_controller::CSkinLoader::Instance();
  QPainter painter(this);
  painter.fillRect(mirrored(0, free_edge), skin.GetColor(QStringLiteral("surface")));
  painter.fillRect(mirrored(free_edge, kShadow), Shade(mirrored(free_edge, kShadow), direction));
  painter.fillRect(mirrored(free_edge, 1), skin.GetColor(QStringLiteral("control_border")));
}

}  // namespace WidgetKit
