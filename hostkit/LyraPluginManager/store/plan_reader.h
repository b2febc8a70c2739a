#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "store/database_thread.h"
#include "store/plan_repository.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// Reads what the catalog does not hold over a connection of its own, so that no one waits behind somebody's write.
/// Throws CStoreError. Thread: any; the connection lives on a thread of its own and is made again after it was lost.
class CPlanReader {
 public:
  using Opener = std::function<std::unique_ptr<CSqlEngine>(std::shared_ptr<CConnectionWatch>)>;

  CPlanReader(Opener open, std::shared_ptr<CAnswering> answering);

  std::optional<StoredPlan> WholePlan(int32_t code);
  std::pair<int32_t, int32_t> DefaultView(int32_t user);
  CameraList Cameras();
  std::optional<std::list<ptz_plugin_protocol::PresetInfo>> Presets(int32_t camera);
  std::optional<std::list<int32_t>> StreamTypes(int32_t camera);
  std::vector<std::string> FavoriteCameras(int32_t user);
  /// Closes the connection some time soon; the next read makes another. For a store in a
  /// file, whose log stays as long as anybody has it open.
  void Release();

  /// Later reads fail. Then, on Thread(), as CDatabaseThread has it.
  void BeginStop();
  /// Breaks off what waits for the server.
  void Cut() { watch_->Cut(); }
  CDatabaseThread& Thread() { return thread_; }

 private:
  struct Connection;

  template <class Work>
  auto Read(Work work);

  const std::shared_ptr<CConnectionWatch> watch_;
  const std::shared_ptr<Connection> connection_;
  CDatabaseThread thread_;
};

}  // namespace TarnHost::Store
