#include "ResourceTreeKit/camera_row_delegate.h"

#include <QPainter>
#include <QStyle>

#include "ResourceTreeKit/camera_model.h"
#include "WidgetKit/high_dpi_svg_icon.h"

namespace ResourceTreeKit {

namespace {

constexpr int kStar = 16;
constexpr int kStarRoom = 26;

QIcon StarIcon(const QString& name) {
  return WidgetKit::GetHighDpiSvgIcon(QStringLiteral(":/TarnHost/icons/%1.svg").arg(name),
                                      QStringLiteral(":/TarnHost/icons/%1_sel.svg").arg(name), QSize(20, 20));
}

}  // namespace

CCameraRowDelegate::CCameraRowDelegate(QObject* parent)
    : QStyledItemDelegate(parent),
      star_(StarIcon(QStringLiteral("favorite"))),
      empty_star_(StarIcon(QStringLiteral("favorite_off"))) {}

QRect CCameraRowDelegate::StarRect(const QRect& row, const QModelIndex& index, Qt::LayoutDirection direction) {
  if (!index.data(CCameraModel::FavoriteRole).isValid()) {
    return {};
  }
  const int middle = row.center().y() - kStar / 2 + 1;
  const QRect star(row.right() - kStarRoom + (kStarRoom - kStar) / 2, middle, kStar, kStar);
  return QStyle::visualRect(direction, row, star);
}

void CCameraRowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (index.data(CCameraModel::FavoriteRole).isValid()) {
    const int room = option->rect.width() - option->decorationSize.width() - kStarRoom - 12;
    option->text = option->fontMetrics.elidedText(option->text, option->textElideMode, room);
  }
}

void CCameraRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  const QRect star = StarRect(option.rect, index, option.direction);
  const bool favorite = index.data(CCameraModel::FavoriteRole).toBool();
  const bool offered = option.state & (QStyle::State_MouseOver | QStyle::State_Selected);
  if (!star.isEmpty() && (favorite || offered)) {
    const QIcon::Mode mode = option.state & QStyle::State_Selected ? QIcon::Selected : QIcon::Normal;
    (favorite ? star_ : empty_star_).paint(painter, star, Qt::AlignCenter, mode);
  }
}

}  // namespace ResourceTreeKit
