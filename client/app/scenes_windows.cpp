#include "app/scenes.h"
#include "pictures/test_picture_source.h"
#include "wall/live_wall.h"
#include "wall/wall_bar.h"
#include "window/main_window.h"

// What the windows of the wall say of their cameras.
namespace TarnClient {

namespace {

/// Drawn pictures with a status made up for them.
class CStatedSource : public CTestPictureSource {
 public:
  CStatedSource(const view_plugin_protocol::PlanWindow& window, const PictureStatus& status)
      : CTestPictureSource(window), status_(status) {}
  PictureStatus Status() const override { return status_; }
  QImage LatestPicture(const QSize& wanted) override {
    return status_.taken.isValid() ? CTestPictureSource::LatestPicture(wanted) : QImage();
  }

 private:
  const PictureStatus status_;
};

struct StatedCamera {
  const char* name;
  PictureState state;
  PictureLoss loss = PictureLoss::None;
  bool has_picture = true;
  bool repeats = false, key_frames_only = false;
};

const std::vector<StatedCamera>& StatedCameras() {
  using State = PictureState;
  static const std::vector<StatedCamera> cameras{
      {"CAM 001 Gate", State::Live},
      {"CAM 002 Fence", State::Opening, PictureLoss::None, false},
      {"CAM 003 Ramp", State::Late},
      {"CAM 004 Roof", State::Lost, PictureLoss::NoAnswer},
      {"CAM 005 Hall", State::Lost, PictureLoss::WrongPassword, false},
      {"CAM 006 Lift", State::Offline, PictureLoss::None, false},
      {"CAM 007 Car park", State::Live, PictureLoss::None, true, true},
      {"CAM 008 River", State::Live, PictureLoss::None, true, false, true},
  };
  return cameras;
}

PictureStatus StatusOf(const StatedCamera& camera) {
  PictureStatus status;
  status.state = camera.state;
  status.loss = camera.loss;
  status.repeats = camera.repeats;
  status.key_frames_only = camera.key_frames_only;
  if (camera.has_picture) {
    status.taken = QDateTime(QDate::currentDate(), QTime(14, 3, 7));
  }
  return status;
}

std::unique_ptr<IPictureSource> OpenStated(const view_plugin_protocol::PlanWindow& window) {
  return std::make_unique<CStatedSource>(window, StatusOf(StatedCameras().at(window.window_no - 1)));
}

}  // namespace

void CScene::AddStatedWall(int split) {
  Browse();
  Add([this, split] {
    auto* wall = new CLiveWall(std::make_shared<CReadyPictureSupply>(&OpenStated), &window_->Wall());
    wall->setGeometry(window_->Wall().rect().adjusted(0, window_->Wall().Bar()->height(), 0, 0));
    wall->Bar()->hide();  // what its buttons do is the window's
    view_plugin_protocol::GetPlanDetailResponse plan;
    plan.name = "Whole site";
    view_plugin_protocol::PlanPage page;
    page.split_type = split;
    for (const StatedCamera& camera : StatedCameras()) {
      const int number = static_cast<int>(page.windows.size()) + 1;
      page.windows.push_back({number, 1, std::to_string(number), camera.name, 0, 0});
    }
    plan.pages = {page};
    wall->show();
    wall->Play(plan);
    return true;
  });
}

void CScene::WindowStates() {
  AddStatedWall(4);
}

void CScene::WindowStatesSmall() {
  AddStatedWall(8);
}

}  // namespace TarnClient
