#pragma once

#include <TarnPlanView/open_group.h>

#include <QJsonObject>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QVector>

#include "history/play_history.h"

namespace TarnClient {

/// How a user left a wall and its window, to be found again at the next start. A plain value.
struct RememberedWall {
  static constexpr int kMostFamilies = 8;
  static constexpr int kMostOpenGroups = 100;  // of a tree; each costs a request at the start

  struct Family {
    TarnPlanView::OpenGroups open_groups;
    QStringList searches;  // texts searched for, latest first
  };
  /// What the user last played.
  struct Played {
    QString code;  // empty: nothing
    bool is_group = false;
  };

  int number = 0;  // of the wall
  bool is_open = true;
  QRect window;  // that has not the whole screen, without its frame; empty: not known
  bool is_maximized = false;
  bool is_full_screen = false;
  QString screen;      // on which the window stood; empty: not known
  QRect screen_place;  // where that screen was among the others
  int side_width = 0;  // of the panels beside the wall; 0: not known
  int shown_family = 0;
  QVector<Family> families;
  Played last_played;

  QJsonObject ToJson() const;
  /// Values that are not there or cannot be are left out; `sound` becomes false for the latter.
  static RememberedWall FromJson(const QJsonObject& json, bool* sound);
};

/// How a user left the desk: the main window's wall, the others, and what was played. A plain value.
struct RememberedDesk : RememberedWall {
  static constexpr int kMostWalls = 3;  // beside the main window's

  QVector<RememberedWall> walls;
  QVector<PlayedPlan> history;  // latest first

  /// Of a wall that was never open, what is known of none.
  RememberedWall Wall(int wall_number) const;

  QJsonObject ToJson() const;
  static RememberedDesk FromJson(const QJsonObject& json, bool* sound);

  bool operator==(const RememberedDesk& other) const { return ToJson() == other.ToJson(); }
  bool operator!=(const RememberedDesk& other) const { return !(*this == other); }
};

}  // namespace TarnClient
