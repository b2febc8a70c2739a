#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "store/database_thread.h"
#include "store/plan_repository.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// Reads what the catalog does not hold over a connection of its own, so that nobody waits behind somebody's write.
/// Throws CStoreError. Thread: any; the connection lives on a thread of its own and is made anew after it was lost.
class CPlanReader {
 public:
  using Opener = std::function<std::unique_ptr<CSqlEngine>()>;

  explicit CPlanReader(Opener open);
  ~CPlanReader();

  std::optional<StoredPlan> WholePlan(int32_t code);
  std::pair<int32_t, int32_t> DefaultView(int32_t user);
  CameraList Cameras();
  std::optional<std::list<ptz_plugin_protocol::PresetInfo>> Presets(int32_t camera);
  std::optional<std::list<int32_t>> StreamTypes(int32_t camera);
  std::vector<std::string> FavoriteCameras(int32_t user);
  /// Later reads fail. Once or more.
  void Stop();

 private:
  template <class Work>
  auto Read(const Work& work);
  void Connect();  // on the thread, as the next
  void Disconnect();

  const Opener open_;
  std::unique_ptr<CSqlEngine> engine_;
  std::unique_ptr<CPlanRepository> repository_;
  CDatabaseThread thread_;
};

}  // namespace TarnHost::Store
