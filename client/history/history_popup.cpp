#include "history/history_popup.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QScreen>
#include <QVBoxLayout>

#include "MarUIControl/accessible_role.h"
#include "history/history_item_delegate.h"
#include "history/play_history.h"

namespace TarnClient {

namespace {

constexpr int kWidth = 340, kMostRows = 8;

// Below the anchor where there is room, and never off its screen.
QPoint PlaceBelow(const QWidget* anchor, const QSize& size) {
  const QScreen* screen = QGuiApplication::screenAt(anchor->mapToGlobal(QPoint()));
  const QRect room = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
  const QPoint below = anchor->mapToGlobal(QPoint(0, anchor->height() + 1));
  return QPoint(qBound(room.left(), below.x(), qMax(room.left(), room.right() + 1 - size.width())),
                qBound(room.top(), below.y(), qMax(room.top(), room.bottom() + 1 - size.height())));
}

}  // namespace

CHistoryPopup::CHistoryPopup(CPlayHistory* history, QWidget* parent)
    : QFrame(parent, Qt::Popup), history_(history), list_(new QListView(this)), empty_(new QLabel(this)) {
  setObjectName(QStringLiteral("history_popup"));
  setAccessibleName(tr("Plans played lately"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(1, 1, 1, 1);
  layout->setSpacing(0);
  empty_->setText(tr("No plan was played yet."));
  empty_->setAlignment(Qt::AlignCenter);
  empty_->setMargin(24);
  layout->addWidget(empty_);
  list_->setObjectName(QStringLiteral("history_list"));
  list_->setAccessibleName(accessibleName());
  list_->setModel(history_);
  list_->setItemDelegate(new CHistoryItemDelegate(list_));
  list_->setUniformItemSizes(true);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->installEventFilter(this);
  layout->addWidget(list_);
  connect(list_, &QListView::clicked, this, &CHistoryPopup::Take);
}

void CHistoryPopup::ShowBelow(QWidget* anchor) {
  const int rows = history_->rowCount();
  list_->setVisible(rows > 0);
  empty_->setVisible(rows == 0);
  ensurePolished();
  list_->ensurePolished();
  const int list_height = qMin(rows, kMostRows) * list_->sizeHintForRow(0) + 2 * list_->frameWidth();
  list_->setFixedHeight(list_height);
  resize(kWidth, minimumSizeHint().height());
  move(PlaceBelow(anchor, size()));
  anchor_ = anchor;
  list_->setCurrentIndex(FirstPlayable());
  list_->scrollToTop();
  show();
  if (rows > 0) {
    list_->setFocus(Qt::PopupFocusReason);
  } else {
    setFocus(Qt::PopupFocusReason);
    MarUIControl::AnnounceAlert(empty_);
  }
}

// Keys are for the list, which knows neither Return, as the platform may take it for something else, nor Esc.
bool CHistoryPopup::eventFilter(QObject* watched, QEvent* event) {
  if (watched == list_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      Take(list_->currentIndex());
      return true;
    }
  }
  return QFrame::eventFilter(watched, event);
}

// While the pop-up had the mouse, the button was not let know that it has left.
void CHistoryPopup::hideEvent(QHideEvent* event) {
  QFrame::hideEvent(event);
  if (anchor_ && !anchor_->rect().contains(anchor_->mapFromGlobal(QCursor::pos()))) {
    anchor_->setAttribute(Qt::WA_UnderMouse, false);
    anchor_->update();
  }
}

QModelIndex CHistoryPopup::FirstPlayable() const {
  for (int row = 0; row < history_->rowCount(); ++row) {
    if (history_->index(row).flags() & Qt::ItemIsEnabled) {
      return history_->index(row);
    }
  }
  return QModelIndex();
}

void CHistoryPopup::Take(const QModelIndex& index) {
  if (index.flags() & Qt::ItemIsEnabled) {
    const int row = index.row();
    hide();
    Q_EMIT SignalTaken(row);
  }
}

}  // namespace TarnClient
