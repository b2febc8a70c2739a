#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <vector>

#include "ResourceTreeKit/camera_item_info.h"
#include "ResourceTreeKit/logic_node_param.h"
#include "ResourceTreeKit/region_item_info.h"

namespace ResourceTreeKit {

/// The rows of a camera tree as one flat array, made once off the GUI thread and never changed: breadth first, so that
/// the children of a row stand side by side behind it. Row 0 is the invisible one above all. Thread: any.
class CCameraContent {
 public:
  struct Node {
    int parent = -1, first_child = 0, child_count = 0;
    int camera = -1;  // place among all cameras; -1 for a region
    QString name, folded, code;

    bool IsCamera() const { return camera >= 0; }
  };

  /// Regions before cameras, each sorted by name. What stands in no region, or in a ring of them, stands at the top.
  static std::shared_ptr<const CCameraContent> Build(const std::vector<CRegionItemInfo>& regions,
                                                     std::vector<CCameraItemInfo> cameras, const LogicNodeParam& param);

  const std::vector<Node>& Nodes() const { return nodes_; }
  const Node& At(int node) const { return nodes_[static_cast<size_t>(node)]; }
  const CCameraItemInfo& CameraOf(const Node& node) const { return cameras_[static_cast<size_t>(node.camera)]; }
  /// How many cameras have a row.
  int CameraCount() const { return camera_nodes_.size(); }
  /// Any camera of the site, whether it has a row or not; null for an unknown code.
  const CCameraItemInfo* FindCamera(const QString& code) const;
  /// Whether rows and cameras are the same in everything.
  bool IsSame(const CCameraContent& other) const;
  /// The row of a region or camera; 0 for none.
  int RegionNode(const QString& code) const { return region_nodes_.value(code); }
  int CameraNode(const QString& code) const { return camera_nodes_.value(code); }

  /// The form in which names are compared when filtering.
  static QString Folded(const QString& text);

 private:
  class Builder;

  std::vector<CCameraItemInfo> cameras_;
  std::vector<Node> nodes_;
  QHash<QString, int> camera_places_, camera_nodes_, region_nodes_;
};

}  // namespace ResourceTreeKit
