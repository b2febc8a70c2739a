#pragma once

#include <QSet>
#include <QTreeView>
#include <QVector>

#include "ResourceTreeKit/camera_model.h"

namespace ResourceTreeKit {

/// What the user made of a camera tree, by the rows' own keys: it outlasts the rows. Thread: GUI.
class CCameraTreeState {
 public:
  /// Which rows are expanded, those above all other rows at least.
  static QSet<CameraRowKey> Expanded(const QTreeView& view, const CCameraModel& model);
  /// Expands these rows and no other, before the view lays its rows out.
  static void Expand(QTreeView* view, const CCameraModel& model, const QSet<CameraRowKey>& keys);

  enum View {
    kShowCurrent,  // what is above the current row expands, and the row comes into sight
    kStay,         // nothing moves; the row at the top stays there
  };

  /// Current row, selection and the row at the top.
  static CCameraTreeState Take(const QTreeView& view, const CCameraModel& model);
  /// Rows that are gone are left out.
  void Restore(QTreeView* view, const CCameraModel& model, View where) const;

 private:
  void RestoreTop(QTreeView* view, const CCameraModel& model) const;

  CameraRowKey current_, top_;
  QVector<CameraRowKey> selected_;
  int top_offset_ = 0, scrolled_ = 0;
};

}  // namespace ResourceTreeKit
