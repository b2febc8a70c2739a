#pragma once

#include <QMenu>

#include "commands/wall_choice.h"

namespace TarnClient {

/// The walls that a row can be played on, and a new one; by arrows, or by the number of the wall as a key. Thread: GUI.
class CPlayOnMenu : public QMenu {
  Q_OBJECT
 public:
  /// `own`: the wall whose panel shows the menu. `walls` is not owned and outlives the menu.
  CPlayOnMenu(const IWallChoice* walls, int own, QWidget* parent);

  /// On another wall than the own one, or the new one, so that Return alone does what is most wanted.
  void OpenAt(const QPoint& place);

 Q_SIGNALS:
  void SignalChosen(int number);
  void SignalNewChosen();

 private:
  void Fill();
  QString TextOf(const IWallChoice::Wall& wall) const;

  const IWallChoice* const walls_;
  const int own_;
  QAction* usual_ = nullptr;
};

}  // namespace TarnClient
