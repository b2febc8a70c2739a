#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "ResourceTreeKit/camera_item_info.h"
#include "recording_services.h"

namespace TarnTest {

using ResourceTreeKit::CCameraItemInfo;

/// Answers with regions that no sound site has.
class CBrokenSite : public CRecordingServices {
 public:
  using CRecordingServices::CRecordingServices;
  bool GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions, std::vector<CCameraItemInfo>& cameras,
                     std::string*) override {
    regions = {{"1", "A", "2"}, {"2", "B", "1"}, {"3", "Self", "3"}, {"4", "Lost", "99"}, {"4", "Twice", ""}};
    cameras = {{"10", "In the ring", "1", true}, {"11", "Nowhere", "77", true}, {"10", "Same code", "", true}};
    return true;
  }
};

/// Three regions of thirty cameras, of which a test takes and adds some.
class CChangingSite : public CRecordingServices {
 public:
  explicit CChangingSite(std::shared_ptr<TarnHost::IHostServices> target) : CRecordingServices(std::move(target)) {
    for (int number = 0; number < 90; ++number) {
      cameras_.push_back(
          {std::to_string(100 + number), "CAM " + std::to_string(100 + number), std::to_string(1 + number / 30), true});
    }
  }
  bool GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions, std::vector<CCameraItemInfo>& cameras,
                     std::string* error) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    *error = error_;
    regions = {{"1", "North", ""}, {"2", "South", ""}, {"3", "West", ""}, {"4", "New", ""}};
    cameras = cameras_;
    return error_.empty();
  }
  void Change(const std::function<void(std::vector<CCameraItemInfo>&)>& change) {
    const std::lock_guard<std::mutex> lock(mutex_);
    change(cameras_);
  }
  void FailWith(const std::string& error) {
    const std::lock_guard<std::mutex> lock(mutex_);
    error_ = error;
  }

 private:
  std::mutex mutex_;
  std::vector<CCameraItemInfo> cameras_;
  std::string error_;
};

}  // namespace TarnTest
