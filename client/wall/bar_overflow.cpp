#include "wall/bar_overflow.h"

#include <QEvent>
#include <QLayout>
#include <QToolButton>
#include <algorithm>
#include <numeric>

#include "TarnUIDataController/popup_menu.h"

namespace TarnClient {

namespace {

constexpr int kTextRoom = 240;  // a longer text is cut before more buttons go
constexpr int kLeastTextRoom = 116;

}  // namespace

int GroupsWithoutRoom(int room, int fixed, const QVector<int>& group_widths, int more) {
  int needed = std::accumulate(group_widths.begin(), group_widths.end(), fixed);
  if (needed <= room) {
    return 0;
  }
  needed += more;
  int given_way = 0;
  while (needed > room && given_way < group_widths.size()) {
    needed -= group_widths[given_way++];
  }
  return given_way;
}

CBarOverflow::CBarOverflow(QWidget* bar, QLabel* text) : QObject(bar), bar_(bar), text_(text) {
  bar->installEventFilter(this);
}

void CBarOverflow::Add(const QVector<QToolButton*>& together) {
  groups_.append(together);
}

void CBarOverflow::AddMore() {
  more_ = new QToolButton(bar_);
  more_->setObjectName(QStringLiteral("wall_more_btn"));
  more_->setIcon(QIcon(QStringLiteral(":/TarnClient/images/more.svg")));
  more_->setIconSize(QSize(20, 20));
  more_->setFocusPolicy(Qt::TabFocus);
  more_->setToolTip(tr("More"));
  more_->setAccessibleName(more_->toolTip());
  more_->hide();
  bar_->layout()->addWidget(more_);
  connect(more_, &QToolButton::clicked, this, &CBarOverflow::OpenMenu);
}

void CBarOverflow::SetWanted(QToolButton* button, bool wanted) {
  unwanted_.removeAll(button);
  if (!wanted) {
    unwanted_.append(button);
  }
  Fit();
}

// Each change of a label's text or of a button asks for the layout again.
bool CBarOverflow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest) {
    Fit();
  }
  return QObject::eventFilter(watched, event);
}

void CBarOverflow::Fit() {
  if (!more_) {
    return;
  }
  QVector<int> widths;
  for (const Group& group : qAsConst(groups_)) {
    widths.append(WidthOf(group));
  }
  in_menu_ = GroupsWithoutRoom(bar_->contentsRect().width(), FixedWidth(), widths, WidthOf(*more_));
  for (int place = 0; place < groups_.size(); ++place) {
    for (QToolButton* button : qAsConst(groups_[place])) {
      button->setVisible(place >= in_menu_ && IsWanted(button));
    }
  }
  const auto taken = std::accumulate(widths.begin(), widths.begin() + in_menu_, 0);
  more_->setVisible(taken > 0);
}

int CBarOverflow::WidthOf(const QWidget& part) const {
  const int width = std::max(part.sizeHint().width(), part.minimumWidth());
  return std::min(width, part.maximumWidth()) + bar_->layout()->spacing();
}

int CBarOverflow::WidthOf(const Group& group) const {
  int width = 0;
  for (const QToolButton* button : group) {
    if (IsWanted(button)) {
      width += WidthOf(*button);
    }
  }
  return width;
}

bool CBarOverflow::GivesWay(const QWidget* part) const {
  return std::any_of(groups_.begin(), groups_.end(), [part](const Group& group) {
    return std::any_of(group.begin(), group.end(), [part](const QToolButton* button) { return button == part; });
  });
}

int CBarOverflow::FixedWidth() const {
  const QMargins margins = bar_->layout()->contentsMargins();
  int width = margins.left() + margins.right() + std::min(text_->sizeHint().width(), kTextRoom);
  for (int place = 0; place < bar_->layout()->count(); ++place) {
    const QWidget* part = bar_->layout()->itemAt(place)->widget();
    if (part && part != text_ && part != more_ && !part->isHidden() && !GivesWay(part)) {
      width += WidthOf(*part);
    }
  }
  return width;
}

int CBarOverflow::LeastWidth() const {
  const int text = text_->sizeHint().width();
  return FixedWidth() - std::min(text, kTextRoom) + std::min(text, kLeastTextRoom) + WidthOf(*more_);
}

void CBarOverflow::OpenMenu() {
  auto* menu = new tarn_ui_data_controller::CPopupMenu(more_);
  menu->setAccessibleName(more_->accessibleName());
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const Group& group : groups_.mid(0, in_menu_)) {
    for (const QToolButton* button : group) {
      if (IsWanted(button) && button->defaultAction()) {
        menu->addAction(button->defaultAction());
      }
    }
  }
  menu->PopupAt(more_->mapToGlobal(QPoint(0, more_->height() + 1)));
}

}  // namespace TarnClient
