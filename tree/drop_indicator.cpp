#include "drop_indicator.h"

#include <QFrame>
#include <QLabel>

namespace TarnPlanView {

namespace {

constexpr int kCircleSize = 6;
constexpr int kShotHeight = 2;

void KeepOutOfTheWay(QWidget* part) {
  part->setAttribute(Qt::WA_TransparentForMouseEvents);
  part->setFocusPolicy(Qt::NoFocus);
  part->hide();
}

QLabel* MakeLabel(QWidget* parent, const QString& name, const QString& style) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setStyleSheet(style);
  return label;
}

}  // namespace

void CDropIndicator::MakeLine(QWidget* viewport) {
  line_ = new QWidget(viewport);
  line_->setObjectName(QStringLiteral("Line"));
  MakeLabel(line_, QStringLiteral("ShotLine"), QStringLiteral("QLabel#ShotLine{background: #0097FB;}"));
  MakeLabel(line_, QStringLiteral("Circle"),
            QStringLiteral("QLabel#Circle{border: 1px solid #0097FB; border-radius: 2px;}"));
  KeepOutOfTheWay(line_);
}

void CDropIndicator::MakeFrame(QWidget* viewport) {
  frame_ = new QFrame(viewport);
  frame_->setObjectName(QStringLiteral("item_rect"));
  frame_->setStyleSheet(
      QStringLiteral("QFrame#item_rect{background: rgba(0,151,251,0.05);border: 1px solid rgba(0, 151, 251, 0.50);}"));
  KeepOutOfTheWay(frame_);
}

void CDropIndicator::ShowLine(const QRect& row, bool above) {
  if (frame_) {
    frame_->hide();
  }
  if (!line_) {
    return;
  }
  line_->setEnabled(false);
  const QPoint at = above ? row.topLeft() : row.bottomLeft();
  const int lowest = line_->parentWidget()->height() - kCircleSize;  // the last row's lower edge stays visible
  line_->setGeometry(at.x(), qMin(at.y(), lowest), row.width(), kCircleSize);
  line_->findChild<QLabel*>(QStringLiteral("ShotLine"))
      ->setGeometry(0, (kCircleSize - kShotHeight) / 2, row.width() - kCircleSize, kShotHeight);
  line_->findChild<QLabel*>(QStringLiteral("Circle"))
      ->setGeometry(row.width() - kCircleSize, 0, kCircleSize, kCircleSize);
  line_->show();
  line_->raise();
}

void CDropIndicator::ShowFrame(const QRect& row) {
  if (line_) {
    line_->hide();
  }
  if (!frame_) {
    return;
  }
  frame_->setGeometry(row.left() - 2, row.top() - 2, row.width(), row.height() + 4);
  frame_->show();
  frame_->raise();
}

void CDropIndicator::Hide() {
  for (QWidget* part : {line_, static_cast<QWidget*>(frame_)}) {
    if (part) {
      part->hide();
    }
  }
}

}  // namespace TarnPlanView
