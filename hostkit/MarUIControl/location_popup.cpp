#include "MarUIControl/location_popup.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "MarUIControl/return_key.h"
#include "MarUIControl/screen_room.h"
#include "WidgetKit/new_location_view_widget.h"
#include "qt/event_places.h"

namespace MarUIControl {

namespace {

constexpr int kFullHeight = 280;
constexpr int kGap = 2;

}  // namespace

LocationPopup::LocationPopup(QWidget* owner) : QFrame(owner, Qt::Popup | Qt::FramelessWindowHint), owner_(owner) {
  setObjectName(QStringLiteral("location_popup"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  search_ = new WidgetKit::CNewLocationViewWidget(this);
  search_->setAccessibleName(tr("Find in list"));
  search_->installEventFilter(this);
  search_->hide();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->setSpacing(4);
  layout->addWidget(search_);
}

LocationPopup::~LocationPopup() = default;

void LocationPopup::SetView(QAbstractItemView* view) {
  if (view == view_) {
    return;
  }
  if (view_) {
    view_->removeEventFilter(this);
    disconnect(view_, nullptr, this, nullptr);
    view_->hide();
    view_->setParent(nullptr);
  }
  view_ = view;
  search_->SetView(view);
  if (!view) {
    return;
  }
  layout()->addWidget(view);
  view->installEventFilter(this);
  view->show();
  connect(view, &QAbstractItemView::clicked, this, &LocationPopup::Choose);
}

void LocationPopup::SetSearchVisible(bool visible) {
  search_->setVisible(visible);
}

void LocationPopup::OpenAt(const QRect& anchor) {
  setAttribute(Qt::WA_NoMouseReplay, false);
  setAccessibleName(owner_->accessibleName());
  ensurePolished();
  setGeometry(PlaceFor(anchor));
  show();
  if (!search_->isHidden()) {
    search_->setFocus(Qt::PopupFocusReason);
  } else if (view_) {
    view_->setFocus(Qt::PopupFocusReason);
  }
  if (view_ && view_->currentIndex().isValid()) {
    view_->scrollTo(view_->currentIndex());
  }
}

QRect LocationPopup::PlaceFor(const QRect& anchor) const {
  const QRect room = RoomAround(anchor.center(), owner_->screen());
  const int below = room.bottom() - anchor.bottom() - kGap;
  const int above = anchor.top() - room.top() - kGap;
  QRect place(anchor.bottomLeft(), QSize(qMin(anchor.width(), room.width()), qBound(0, below, kFullHeight)));
  place.translate(0, 1 + kGap);
  if (below < qMin(above, kFullHeight)) {
    place.setHeight(qBound(0, above, kFullHeight));
    place.moveBottom(anchor.top() - 1 - kGap);
  }
  return MovedInto(room, place);
}

bool LocationPopup::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (HandleKey(watched, key->key(), key->modifiers() & ~Qt::KeypadModifier)) {
      event->accept();
      return true;
    }
  }
  return QFrame::eventFilter(watched, event);
}

bool LocationPopup::HandleKey(QObject* watched, int key, Qt::KeyboardModifiers modifiers) {
  const bool close = (key == Qt::Key_Escape && (watched != search_ || search_->text().isEmpty())) ||
                     (key == Qt::Key_F4 && modifiers == Qt::NoModifier) ||
                     ((key == Qt::Key_Up || key == Qt::Key_Down) && modifiers == Qt::AltModifier);
  if (close) {
    hide();
    return true;
  }
  if (!IsReturn(key) || modifiers != Qt::NoModifier || !view_) {
    return false;
  }
  if (watched == search_) {
    return ReturnInSearch();
  }
  const QModelIndex current = view_->currentIndex();
  if (!(current.flags() & Qt::ItemIsSelectable)) {
    return false;  // the view may expand it
  }
  Choose(current);
  return true;
}

// Return takes the hit that is current; before the text was looked for there is none to take.
bool LocationPopup::ReturnInSearch() {
  const bool located = !search_->IsLocating() && search_->HitCount() > 0 &&
                       WidgetKit::CNewLocationViewWidget::LocatedText(view_) == search_->FilterText();
  if (!located) {
    search_->Locate();
    return true;
  }
  Choose(view_->currentIndex());
  return true;
}

// A click on the combo box closes; handed on to it, it would open again.
void LocationPopup::mousePressEvent(QMouseEvent* event) {
  const QPoint in_owner = owner_->mapFromGlobal(TarnQt::GlobalPlaceOf(*event));
  setAttribute(Qt::WA_NoMouseReplay, owner_->rect().contains(in_owner));
  QFrame::mousePressEvent(event);
}

void LocationPopup::hideEvent(QHideEvent* event) {
  QFrame::hideEvent(event);
  Q_EMIT Closed();
}

void LocationPopup::Choose(const QModelIndex& index) {
  if (index.isValid() && (index.flags() & Qt::ItemIsSelectable) && (index.flags() & Qt::ItemIsEnabled)) {
    Q_EMIT Chosen(index);
  }
}

}  // namespace MarUIControl
