#include "TarnConfiguration/view_config_interface.h"

#include <utility>

#include "TarnHost/host_services.h"

namespace TarnConfiguration {
namespace {

class CViewConfigInterface : public IViewConfigInterface {
 public:
  explicit CViewConfigInterface(std::string station_id) : station_id_(std::move(station_id)) {}
  std::string GetStationId() const override { return station_id_; }

 private:
  const std::string station_id_;
};

}  // namespace

std::shared_ptr<IViewConfigInterface> CreateViewConfigInterface() {
  const auto services = TarnHost::InstalledHostServices();
  if (!services || services->StationId().empty()) {
    return nullptr;
  }
  return std::make_shared<CViewConfigInterface>(services->StationId());
}

}  // namespace TarnConfiguration
