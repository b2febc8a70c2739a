#pragma once

#include <QSet>
#include <QTreeView>
#include <QVector>

#include "ResourceTreeKit/camera_model.h"

namespace ResourceTreeKit {

/// What the user made of a camera tree, by the rows' own keys: it outlasts rows that are made anew. Thread: GUI.
class CCameraTreeState {
 public:
  /// Which rows are expanded, those above all other rows at least.
  static QSet<CameraRowKey> Expanded(const QTreeView& view, const CCameraModel& model);
  /// Expands these rows and no other, before the view lays its rows out.
  static void Expand(QTreeView* view, const CCameraModel& model, const QSet<CameraRowKey>& keys);

  /// Current row and selection.
  static CCameraTreeState Take(const QTreeView& view, const CCameraModel& model);
  /// Rows that are gone are left out; what is above the current row expands.
  void Restore(QTreeView* view, const CCameraModel& model) const;

 private:
  CameraRowKey current_;
  QVector<CameraRowKey> selected_;
};

}  // namespace ResourceTreeKit
