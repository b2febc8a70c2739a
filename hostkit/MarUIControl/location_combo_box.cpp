#include "MarUIControl/location_combo_box.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOption>
#include <QStylePainter>
#include <utility>

#include "MarUIControl/control_accessibility.h"
#include "MarUIControl/location_popup.h"

namespace MarUIControl {

namespace {

constexpr int kHeight = 32;
constexpr int kPadding = 10;
constexpr int kArrowRoom = 26;

QPolygonF Chevron(const QRectF& place, bool up) {
  qreal ends = place.top(), tip = place.bottom();
  if (up) {
    std::swap(ends, tip);
  }
  return QPolygonF({QPointF(place.left(), ends), QPointF(place.center().x(), tip), QPointF(place.right(), ends)});
}

}  // namespace

class CLocationComboBox::Private {
 public:
  explicit Private(CLocationComboBox* box) : popup(new LocationPopup(box)) {}

  LocationPopup* const popup;  // a child of the box
  QString text, placeholder;
};

CLocationComboBox::CLocationComboBox(QWidget* parent) : QWidget(parent), d_(new Private(this)) {
  InstallControlAccessibility();
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(d_->popup, &LocationPopup::Chosen, this, [this](const QModelIndex& index) {
    const QPersistentModelIndex row = index;
    HidePopup();
    if (row.isValid()) {
      Choose(row);
    }
  });
  connect(d_->popup, &LocationPopup::Closed, this, [this] { update(); });
}

CLocationComboBox::~CLocationComboBox() {
  disconnect(d_->popup, nullptr, this, nullptr);
}

void CLocationComboBox::SetLocationView(QAbstractItemView* view) {
  d_->popup->SetView(view);
}

QAbstractItemView* CLocationComboBox::LocationView() const {
  return d_->popup->View();
}

QAbstractItemModel* CLocationComboBox::LocationModel() const {
  const QAbstractItemView* view = LocationView();
  if (!view) {
    return nullptr;
  }
  return view->model();
}

void CLocationComboBox::SetEditLabelVisible(bool visible) {
  d_->popup->SetSearchVisible(visible);
}

WidgetKit::CNewLocationViewWidget* CLocationComboBox::SearchLine() const {
  return d_->popup->SearchLine();
}

void CLocationComboBox::ShowPopup() {
  if (!isEnabled() || !isVisible() || !LocationView() || IsPopupVisible()) {
    return;
  }
  PrepareView();
  d_->popup->OpenAt(QRect(mapToGlobal(QPoint(0, 0)), size()));
  update();
}

void CLocationComboBox::HidePopup() {
  d_->popup->hide();
}

void CLocationComboBox::PrepareView() {}

bool CLocationComboBox::IsPopupVisible() const {
  return d_->popup->isVisible();
}

QString CLocationComboBox::CurrentText() const {
  return d_->text;
}

void CLocationComboBox::SetPlaceholderText(const QString& text) {
  d_->placeholder = text;
  update();
}

QSize CLocationComboBox::sizeHint() const {
  return QSize(fontMetrics().averageCharWidth() * 24 + kArrowRoom, kHeight);
}

QSize CLocationComboBox::minimumSizeHint() const {
  return QSize(fontMetrics().averageCharWidth() * 6 + kArrowRoom, kHeight);
}

void CLocationComboBox::SetCurrentText(const QString& text) {
  if (d_->text == text) {
    return;
  }
  d_->text = text;
  update();
  QAccessibleValueChangeEvent changed(this, text);
  QAccessible::updateAccessibility(&changed);
}

void CLocationComboBox::Choose(const QModelIndex& index) {
  SetCurrentText(index.data(Qt::DisplayRole).toString());
  Q_EMIT SignalIndexActivated(index);
}

void CLocationComboBox::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOption option;
  option.initFrom(this);
  painter.drawPrimitive(QStyle::PE_Widget, option);

  if (d_->text.isEmpty()) {
    DrawText(&painter, d_->placeholder, QPalette::PlaceholderText);
  } else {
    DrawText(&painter, d_->text, QPalette::WindowText);
  }

  QRect arrow(0, 0, 9, 5);
  arrow.moveCenter(QPoint(width() - kArrowRoom / 2 - 1, height() / 2));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::WindowText), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(Chevron(style()->visualRect(layoutDirection(), rect(), arrow), IsPopupVisible()));
}

void CLocationComboBox::DrawText(QPainter* painter, const QString& text, QPalette::ColorRole color) const {
  const QRect room = style()->visualRect(layoutDirection(), rect(), rect().adjusted(kPadding, 0, -kArrowRoom, 0));
  painter->setPen(palette().color(color));
  painter->drawText(room, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine),
                    fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
}

void CLocationComboBox::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    ShowPopup();
    event->accept();
    return;
  }
  QWidget::mousePressEvent(event);
}

void CLocationComboBox::keyPressEvent(QKeyEvent* event) {
  const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
  const bool opens = (modifiers == Qt::NoModifier && (event->key() == Qt::Key_Space || event->key() == Qt::Key_F4)) ||
                     (modifiers == Qt::AltModifier && event->key() == Qt::Key_Down);
  if (!opens) {
    QWidget::keyPressEvent(event);
    return;
  }
  ShowPopup();
  event->accept();
}

// A turn of the wheel over a closed box scrolls the page it stands on, never the choice.
void CLocationComboBox::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

void CLocationComboBox::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void CLocationComboBox::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

void CLocationComboBox::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::EnabledChange && !isEnabled()) {
    HidePopup();
  }
}

// A drop-down is a window of its own and would stay.
void CLocationComboBox::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  HidePopup();
}

}  // namespace MarUIControl
