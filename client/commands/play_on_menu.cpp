#include "commands/play_on_menu.h"

#include <QFontMetrics>

namespace TarnClient {

namespace {

constexpr int kMostPixels = 260;  // of a plan's name

// A lone "&" in a name would become a mnemonic.
QString Shown(const QString& name, const QFontMetrics& font) {
  return font.elidedText(name, Qt::ElideRight, kMostPixels).replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace

CPlayOnMenu::CPlayOnMenu(const IWallChoice* walls, int own, QWidget* parent) : QMenu(parent), walls_(walls), own_(own) {
  setObjectName(QStringLiteral("play_on_menu"));
  setAccessibleName(tr("Play on wall"));
  setToolTipsVisible(true);
  connect(this, &QMenu::aboutToShow, this, &CPlayOnMenu::Fill);
}

void CPlayOnMenu::OpenAt(const QPoint& place) {
  popup(place);
  setActiveAction(usual_);
}

void CPlayOnMenu::Fill() {
  clear();
  usual_ = nullptr;
  for (const IWallChoice::Wall& wall : walls_->OpenWalls()) {
    QAction* action = addAction(TextOf(wall));
    connect(action, &QAction::triggered, this, [this, number = wall.number] { Q_EMIT SignalChosen(number); });
    if (!usual_ && wall.number != own_) {
      usual_ = action;
    }
  }
  addSeparator();
  QAction* one_more = addAction(tr("&New wall"));
  const QString why_not = walls_->WhyNoNewWall();
  one_more->setEnabled(why_not.isEmpty());
  one_more->setToolTip(why_not);
  connect(one_more, &QAction::triggered, this, &CPlayOnMenu::SignalNewChosen);
  if (!usual_) {
    usual_ = one_more;
  }
}

QString CPlayOnMenu::TextOf(const IWallChoice::Wall& wall) const {
  const int shown = wall.number + 1;
  QString text = tr("Wall &%1").arg(shown);
  if (wall.number == own_) {
    text = tr("Wall &%1, here").arg(shown);
  }
  if (wall.playing.isEmpty()) {
    return text;
  }
  return QStringLiteral("%1 - %2").arg(text, Shown(wall.playing, fontMetrics()));
}

}  // namespace TarnClient
