#include "store/plan_reader.h"

#include <utility>

#include "store/store_error.h"

namespace TarnHost::Store {

CPlanReader::CPlanReader(Opener open) : open_(std::move(open)) {}

CPlanReader::~CPlanReader() {
  Stop();
}

void CPlanReader::Stop() {
  thread_.Stop([this] { Disconnect(); });
}

template <class Work>
auto CPlanReader::Read(const Work& work) {
  return thread_.Call([this, &work] {
    Connect();
    try {
      return work(*repository_);
    } catch (const CStoreError& error) {
      if (error.GetKind() == CStoreError::kConnectionLost) {
        Disconnect();
      }
      throw;
    }
  });
}

std::optional<StoredPlan> CPlanReader::WholePlan(int32_t code) {
  return Read([code](CPlanRepository& repository) { return repository.WholePlan(code); });
}

std::pair<int32_t, int32_t> CPlanReader::DefaultView(int32_t user) {
  return Read([user](CPlanRepository& repository) { return repository.DefaultView(user); });
}

CameraList CPlanReader::Cameras() {
  return Read([](CPlanRepository& repository) { return repository.Cameras(); });
}

std::optional<std::list<ptz_plugin_protocol::PresetInfo>> CPlanReader::Presets(int32_t camera) {
  return Read([camera](CPlanRepository& repository) { return repository.Presets(camera); });
}

std::optional<std::list<int32_t>> CPlanReader::StreamTypes(int32_t camera) {
  return Read([camera](CPlanRepository& repository) { return repository.StreamTypes(camera); });
}

std::vector<std::string> CPlanReader::FavoriteCameras(int32_t user) {
  return Read([user](CPlanRepository& repository) { return repository.FavoriteCameras(user); });
}

void CPlanReader::Connect() {
  if (!engine_) {
    engine_ = open_();
    repository_ = std::make_unique<CPlanRepository>(*engine_);
  }
}

void CPlanReader::Disconnect() {
  repository_.reset();
  engine_.reset();
}

}  // namespace TarnHost::Store
