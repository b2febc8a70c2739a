#include <QCoreApplication>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>
#include <algorithm>
#include <memory>

#include "ResourceTreeKit/camera_tree.h"
#include "figures.h"
#include "host_fixture.h"
#include "paint_watch.h"

namespace {

constexpr int kAreas = 10;
constexpr int kRegionsEach = 10;
constexpr int kCamerasEach = 100;
constexpr int kCameras = kAreas * kRegionsEach * kCamerasEach;
constexpr int kRounds = 9;
const char kIcons[] = ":/Bolt/Public/TreePublic/Images/Public/TreePublic/";

std::string Number(int number, size_t digits) {
  const std::string text = std::to_string(number);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

// Every tenth camera looks at a gate.
TarnHost::PlanSite CameraSite() {
  TarnHost::PlanSite site;
  site.users.push_back({"operator", {5, 6, 7}});
  for (int area = 0; area < kAreas; ++area) {
    site.regions.push_back({"Area " + Number(area, 2), -1});
  }
  for (int region = 0; region < kAreas * kRegionsEach; ++region) {
    site.regions.push_back({"Hall " + Number(region, 3), region / kRegionsEach});
  }
  for (int camera = 0; camera < kCameras; ++camera) {
    const std::string place = camera % 10 == 0 ? " gate" : " yard";
    site.cameras.push_back(
        {"CAM " + Number(camera, 5) + place, kAreas + camera / kCamerasEach, camera % 7 != 0, {}, {0}});
  }
  return site;
}

// Returns in the turn of the event loop in which it is done.
void WaitFor(const std::function<bool()>& done) {
  while (!done()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

void ShowAndPaint(QTreeView* view, PaintWatch* watch) {
  watch->Forget();
  view->viewport()->update();
  WaitFor([watch] { return watch->HasPainted(); });
}

/// A view over a filtering proxy over the items of the standard model.
class PlainSide {
 public:
  double OpenMs() {
    return TimeMs([this] {
      ReadRows();
      proxy_.setRecursiveFilteringEnabled(true);
      proxy_.setFilterCaseSensitivity(Qt::CaseInsensitive);
      proxy_.setSourceModel(&model_);
      view_.setUniformRowHeights(true);
      view_.setHeaderHidden(true);
      view_.setModel(&proxy_);
      view_.expandToDepth(0);
      view_.resize(300, 600);
      view_.show();
      ShowAndPaint(&view_, &watch_);
    });
  }
  double FilterMs(const QString& word) {
    proxy_.setFilterFixedString(QString());
    ShowAndPaint(&view_, &watch_);
    return TimeMs([&] {
      proxy_.setFilterFixedString(word);
      view_.expandAll();
      ShowAndPaint(&view_, &watch_);
    });
  }

 private:
  void ReadRows() {
    std::vector<ResourceTreeKit::CRegionItemInfo> regions;
    std::vector<ResourceTreeKit::CCameraItemInfo> cameras;
    std::string error;
    TarnHost::InstalledHostServices()->GetCameraTree(regions, cameras, &error);
    const QIcon group(QString::fromLatin1(kIcons) + QStringLiteral("tree_main_group.svg"));
    const QIcon online(QString::fromLatin1(kIcons) + QStringLiteral("tree_main_camera.svg"));
    const QIcon offline(QString::fromLatin1(kIcons) + QStringLiteral("tree_main_camera_offline.svg"));
    QHash<QString, QStandardItem*> items{{QString(), model_.invisibleRootItem()}};
    for (const auto& region : regions) {
      auto* item = new QStandardItem(group, QString::fromStdString(region.name));
      items.value(QString::fromStdString(region.parent_index_code))->appendRow(item);
      items.insert(QString::fromStdString(region.index_code), item);
    }
    for (const auto& camera : cameras) {
      auto* item = new QStandardItem(camera.online ? online : offline, QString::fromStdString(camera.name));
      item->setData(QString::fromStdString(camera.index_code), Qt::UserRole + 1);
      items.value(QString::fromStdString(camera.region_index_code))->appendRow(item);
    }
  }

  QStandardItemModel model_;
  QSortFilterProxyModel proxy_;
  QTreeView view_;
  PaintWatch watch_{view_.viewport()};
};

class OurSide {
 public:
  double OpenMs() {
    return TimeMs([this] {
      tree_.resize(300, 600);
      tree_.show();
      WaitFor([this] { return tree_.IsLoaded(); });
      ShowAndPaint(&tree_, &watch_);
    });
  }
  double FilterMs(const QString& word, int hits) {
    tree_.SetFilterText(QString());
    WaitFor([this] { return !tree_.IsFiltering(); });
    ShowAndPaint(&tree_, &watch_);
    int found = 0;
    const auto counted =
        QObject::connect(&tree_, &ResourceTreeKit::CCameraTree::SignalFiltered, &tree_, [this, &found](int cameras) {
          found = cameras;
          watch_.Forget();  // what counts is painted after this
        });
    const double ms = TimeMs([&] {
      watch_.Forget();
      Turn([&] { tree_.SetFilterText(word); });
      while (tree_.IsFiltering() || !watch_.HasPainted()) {
        Turn([] { QCoreApplication::processEvents(); });
      }
    });
    QObject::disconnect(counted);
    if (found != hits) {
      qFatal("the filter found %d of %d cameras", found, hits);
    }
    return ms;
  }
  double WorstHoldMs() const { return worst_hold_; }

 private:
  void Turn(const std::function<void()>& work) { worst_hold_ = std::max(worst_hold_, TimeMs(work)); }

  ResourceTreeKit::CCameraTree tree_;
  PaintWatch watch_{tree_.viewport()};
  double worst_hold_ = 0;
};

Figure Ratio(const char* name, const char* what, const Sides& sides) {
  return {QString::fromLatin1(name),
          QString::fromLatin1(what) + QStringLiteral(", against a plain view over the same rows"),
          sides.Ratio(),
          1.5,
          Figure::AtMost,
          sides.Note()};
}

}  // namespace

Figures MeasureCameras() {
  const HostFixture host(CameraSite(), {});
  const Sides open = MeasureByTurns(
      kRounds, [] { return OurSide().OpenMs(); }, [] { return PlainSide().OpenMs(); });
  OurSide ours;
  PlainSide plain;
  ours.OpenMs();
  plain.OpenMs();
  const auto filter = [&](const QString& word, int hits) {
    return MeasureByTurns(
        kRounds, [&] { return ours.FilterMs(word, hits); }, [&] { return plain.FilterMs(word); });
  };
  const Sides some = filter(QStringLiteral("gate"), kCameras / 10);
  const Sides all = filter(QStringLiteral("cam"), kCameras);
  return {Ratio("cameras_open", "open the tree of 10,000 cameras, to painted", open),
          Ratio("cameras_filter", "filter 10,000 cameras by a word of 1,000, to painted", some),
          Ratio("cameras_filter_all", "filter 10,000 cameras by a word of all, to painted", all),
          {QStringLiteral("cameras_hold"), QStringLiteral("longest turn of the event loop while filtering, in ms"),
           ours.WorstHoldMs(), 16.0, Figure::AtMost, QStringLiteral("the worst of %1 texts").arg(2 * kRounds)}};
}
