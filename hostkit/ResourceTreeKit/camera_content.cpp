#include "ResourceTreeKit/camera_content.h"

#include <algorithm>

#include "ResourceTreeKit/camera_name_order.h"

namespace ResourceTreeKit {

namespace {

CCameraContent::Node MakeNode(const std::string& name, const std::string& code, int camera) {
  CCameraContent::Node node;
  node.name = QString::fromStdString(name);
  node.folded = CCameraContent::Folded(node.name);
  node.code = QString::fromStdString(code);
  node.camera = camera;
  return node;
}

}  // namespace

class CCameraContent::Builder {
 public:
  Builder(CCameraContent* content, const std::vector<CRegionItemInfo>& regions, const LogicNodeParam& param)
      : content_(*content), regions_(regions), param_(param) {}

  void Build();

 private:
  struct Children {
    std::vector<Node> regions, cameras;
  };

  void PlaceRegions();
  void PlaceCameras();
  void BreakRings();
  void AppendTop();
  int PlaceOf(const std::string& region_code) const;
  void AppendChildren(int node, Children children);
  void Append(int parent, std::vector<Node> nodes);

  CCameraContent& content_;
  const std::vector<CRegionItemInfo>& regions_;
  const LogicNodeParam& param_;
  QHash<QString, int> places_;      // of regions, from 1
  std::vector<int> parents_;        // of regions, 0 above all
  std::vector<Children> children_;  // of regions, those of 0 at the top
};

void CCameraContent::Builder::Build() {
  children_.resize(regions_.size() + 1);
  PlaceRegions();
  PlaceCameras();
  content_.nodes_.emplace_back();
  AppendTop();
  for (size_t node = 1; node < content_.nodes_.size(); ++node) {
    if (!content_.nodes_[node].IsCamera()) {
      const int place = places_.value(content_.nodes_[node].code);
      AppendChildren(static_cast<int>(node), std::move(children_[static_cast<size_t>(place)]));
    }
  }
}

// The whole site, or one region of it; nothing when there is no such region.
void CCameraContent::Builder::AppendTop() {
  if (param_.root_region_index_code.empty()) {
    AppendChildren(0, std::move(children_[0]));
    return;
  }
  const int place = PlaceOf(param_.root_region_index_code);
  if (place > 0) {
    const CRegionItemInfo& region = regions_[static_cast<size_t>(place) - 1];
    Append(0, {MakeNode(region.name, region.index_code, -1)});
  }
}

void CCameraContent::Builder::PlaceRegions() {
  for (size_t at = 0; at < regions_.size(); ++at) {
    const QString code = QString::fromStdString(regions_[at].index_code);
    if (!places_.contains(code)) {
      places_.insert(code, static_cast<int>(at) + 1);
    }
  }
  parents_.resize(regions_.size() + 1);
  for (size_t at = 0; at < regions_.size(); ++at) {
    parents_[at + 1] = PlaceOf(regions_[at].parent_index_code);
  }
  BreakRings();
  for (size_t at = 0; at < regions_.size(); ++at) {
    if (PlaceOf(regions_[at].index_code) == static_cast<int>(at) + 1) {  // of a code that comes twice the first counts
      children_[static_cast<size_t>(parents_[at + 1])].regions.push_back(
          MakeNode(regions_[at].name, regions_[at].index_code, -1));
    }
  }
}

// Walks up from each region. A walk that meets itself has found a ring, which is opened there.
void CCameraContent::Builder::BreakRings() {
  std::vector<int> walk_of(parents_.size(), 0);
  for (int start = 1; start < static_cast<int>(parents_.size()); ++start) {
    int at = start;
    while (at != 0 && walk_of[static_cast<size_t>(at)] == 0) {
      walk_of[static_cast<size_t>(at)] = start;
      at = parents_[static_cast<size_t>(at)];
    }
    if (at != 0 && walk_of[static_cast<size_t>(at)] == start) {
      parents_[static_cast<size_t>(at)] = 0;
    }
  }
}

void CCameraContent::Builder::PlaceCameras() {
  content_.camera_places_.reserve(static_cast<int>(content_.cameras_.size()));
  content_.camera_nodes_.reserve(static_cast<int>(content_.cameras_.size()));
  content_.nodes_.reserve(content_.cameras_.size() + regions_.size() + 1);
  for (size_t at = 0; at < content_.cameras_.size(); ++at) {
    const CCameraItemInfo& camera = content_.cameras_[at];
    const QString code = QString::fromStdString(camera.index_code);
    if (content_.camera_places_.contains(code)) {
      continue;
    }
    content_.camera_places_.insert(code, static_cast<int>(at));
    if (camera.online || param_.show_offline) {
      children_[static_cast<size_t>(PlaceOf(camera.region_index_code))].cameras.push_back(
          MakeNode(camera.name, camera.index_code, static_cast<int>(at)));
    }
  }
}

// 0 for no region, and for one that is not there.
int CCameraContent::Builder::PlaceOf(const std::string& region_code) const {
  if (region_code.empty()) {
    return 0;
  }
  return places_.value(QString::fromStdString(region_code));
}

void CCameraContent::Builder::AppendChildren(int node, Children children) {
  content_.nodes_[static_cast<size_t>(node)].first_child = static_cast<int>(content_.nodes_.size());
  Append(node, std::move(children.regions));
  Append(node, std::move(children.cameras));
}

void CCameraContent::Builder::Append(int parent, std::vector<Node> nodes) {
  SortByName(&nodes);
  for (Node& node : nodes) {
    const int at = static_cast<int>(content_.nodes_.size());
    node.parent = parent;
    if (node.IsCamera()) {
      content_.camera_nodes_.insert(node.code, at);
    } else {
      content_.region_nodes_.insert(node.code, at);
    }
    content_.nodes_.push_back(std::move(node));
  }
  content_.nodes_[static_cast<size_t>(parent)].child_count += static_cast<int>(nodes.size());
}

std::shared_ptr<const CCameraContent> CCameraContent::Build(const std::vector<CRegionItemInfo>& regions,
                                                            std::vector<CCameraItemInfo> cameras,
                                                            const LogicNodeParam& param) {
  auto content = std::make_shared<CCameraContent>();
  content->cameras_ = std::move(cameras);
  Builder(content.get(), regions, param).Build();
  return content;
}

const CCameraItemInfo* CCameraContent::FindCamera(const QString& code) const {
  const auto place = camera_places_.constFind(code);
  if (place == camera_places_.constEnd()) {
    return nullptr;
  }
  return &cameras_[static_cast<size_t>(*place)];
}

bool CCameraContent::IsSame(const CCameraContent& other) const {
  const auto same_camera = [](const CCameraItemInfo& one, const CCameraItemInfo& two) {
    return one.online == two.online && one.index_code == two.index_code && one.name == two.name &&
           one.region_index_code == two.region_index_code;
  };
  const auto same_node = [](const Node& one, const Node& two) {
    return one.parent == two.parent && one.camera == two.camera && one.code == two.code && one.name == two.name;
  };
  return std::equal(cameras_.begin(), cameras_.end(), other.cameras_.begin(), other.cameras_.end(), same_camera) &&
         std::equal(nodes_.begin(), nodes_.end(), other.nodes_.begin(), other.nodes_.end(), same_node);
}

QString CCameraContent::Folded(const QString& text) {
  return text.normalized(QString::NormalizationForm_C).toCaseFolded();
}

}  // namespace ResourceTreeKit
