#pragma once

#include <TarnPlanView/open_group.h>

#include <QJsonObject>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QVector>

#include "history/play_history.h"

namespace TarnClient {

/// How a user left the desk, to be found again at the next start. A plain value.
struct RememberedDesk {
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

  QRect window;  // of the window that is not maximized, without its frame; empty: not known
  bool is_maximized = false;
  int side_width = 0;  // of the panels beside the wall; 0: not known
  int shown_family = 0;
  QVector<Family> families;
  QVector<PlayedPlan> history;  // latest first
  Played last_played;

  QJsonObject ToJson() const;
  /// Values that are not there or cannot be are left out; `sound` becomes false for the latter.
  static RememberedDesk FromJson(const QJsonObject& json, bool* sound);

  bool operator==(const RememberedDesk& other) const { return ToJson() == other.ToJson(); }
  bool operator!=(const RememberedDesk& other) const { return !(*this == other); }
};

}  // namespace TarnClient
