#pragma once

#include <QObject>
#include <QTimer>
#include <QVector>

#include "settings/wall_memory.h"

namespace TarnClient {

class CUserSettings;

/// Keeps the walls with their windows, and what was played, as the user left them, and puts them there again.
/// Thread: GUI.
class CDeskMemory : public QObject {
  Q_OBJECT
 public:
  /// None of it is owned; `history` is there as long as the memory.
  CDeskMemory(CUserSettings* settings, CPlayHistory* history, QObject* parent);

  /// Remembered from now on, and put as it was, when it was there before. The window is not shown yet.
  CWallMemory* Add(const CWallMemory::Parts& wall);
  /// Its window is about to go.
  void Remove(int number);
  /// What is known of a wall that is not there.
  RememberedWall Known(int number) const;
  /// Beside the main window's: those that the user left open.
  QVector<int> LeftOpen() const;
  /// All but the windows' places, for another user, while the rows are still the last one's.
  void RestoreForNewUser();
  /// How the desk is now, at once instead of some time later.
  void Keep();

 private:
  void KeepLater() { later_.start(); }
  RememberedDesk Now() const;

  CUserSettings* const settings_;
  CPlayHistory* const history_;
  QVector<CWallMemory*> walls_;
  QTimer later_;
};

}  // namespace TarnClient
