#include "ResourceTreeKit/camera_tree.h"
#include "app/scenes.h"
#include "cameras/camera_panel.h"
#include "composing/composer.h"
#include "plans/plan_player.h"
#include "wall/live_wall.h"
#include "wall/wall_window.h"
#include "wall/window_grid.h"
#include "window/main_window.h"
#include "window/wall_desk.h"

// Work on the wall: cameras, windows that are looked at closely, arrangements.
namespace TarnClient {

void CScene::Cameras() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  Add([this] {
    window_->Desk().ShowCameras();
    window_->Desk().FocusRows();
    return true;
  });
  Add([this] {
    ResourceTreeKit::CCameraTree* tree = window_->Desk().Cameras().Tree();
    if (!tree->IsLoaded() || tree->model()->rowCount() == 0) {
      return false;
    }
    tree->expandToDepth(0);
    tree->setCurrentIndex(tree->indexBelow(tree->model()->index(0, 0)));
    return true;
  });
}

void CScene::CamerasWithoutHit() {
  Cameras();
  Add([this] {
    window_->Desk().Cameras().Tree()->SetFilterText(QStringLiteral("no such camera"));
    return true;
  });
}

void CScene::Arranged() {
  Cameras();
  Add([this] {
    ResourceTreeKit::CCameraTree* tree = window_->Desk().Cameras().Tree();
    window_->Desk().Composer().Run(WallCommand::Split9);
    const auto cameras = tree->CamerasBelow(tree->model()->index(0, 0)).mid(0, 3);
    for (const auto& camera : cameras) {
      window_->Desk().Composer().Put({camera.index_code, camera.name});
    }
    window_->Wall().Grid()->Choose(2);
    return true;
  });
}

void CScene::ArrangedWithoutPlan() {
  Cameras();
  Add([this] {
    window_->Player().Stop();
    const ResourceTreeKit::CCameraTree* tree = window_->Desk().Cameras().Tree();
    QVector<WallCamera> cameras;
    for (const auto& camera : tree->CamerasBelow(tree->model()->index(0, 0)).mid(0, 5)) {
      cameras.append({camera.index_code, camera.name});
    }
    window_->Desk().Composer().Fill(cameras);
    return true;
  });
}

void CScene::BackToArrangement() {
  Arranged();
  Add([this] {
    window_->Player().Stop();
    return true;
  });
}

void CScene::Enlarged() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  Add([this] {
    window_->Wall().Grid()->Choose(1);
    window_->Wall().Grid()->Enlarge(1);
    return true;
  });
}

void CScene::Zoomed() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  Add([this] { return window_->Wall().Windows().value(0).frames > 0; });
  Add([this] {
    window_->Wall().Grid()->Choose(1);
    window_->Wall().Grid()->WindowAt(1)->Zoom(2.5);
    return true;
  });
}

void CScene::WindowMenu() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  Add([this] {
    CWallWindow* window = window_->Wall().Grid()->WindowAt(1);
    window_->Wall().Grid()->Choose(1);
    Q_EMIT window_->Wall().Grid()->SignalMenuWanted(1, window->mapToGlobal(window->rect().center()));
    return true;
  });
}

}  // namespace TarnClient
