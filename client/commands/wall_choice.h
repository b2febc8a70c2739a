#pragma once

#include <QString>
#include <QVector>

namespace TarnClient {

/// The walls that something can be played on. They are counted from 0, the main window's, for the user from 1.
/// Thread: GUI.
class IWallChoice {
 public:
  struct Wall {
    int number = 0;
    QString playing = {};  // empty: nothing
  };

  virtual ~IWallChoice() = default;

  /// Those that are open, by number.
  virtual QVector<Wall> OpenWalls() const = 0;
  /// For the user; empty when one more can be opened.
  virtual QString WhyNoNewWall() const = 0;
  /// A plan, or the plans of a group in turn, as if picked there. Nothing on a wall that has been closed.
  virtual void PlayOn(int number, const QString& code, bool is_group) = 0;
  /// The same on one more wall.
  virtual void PlayOnNew(const QString& code, bool is_group) = 0;
};

/// What the user knows the wall as.
QString WallName(int number);

}  // namespace TarnClient
