#include "store/plan_reader.h"

#include <utility>

#include "store/store_error.h"

namespace TarnHost::Store {
namespace {

constexpr std::chrono::milliseconds kBeat{500};

}  // namespace

/// Lives on the thread, and as long as it has something to do.
struct CPlanReader::Connection {
  template <class Work>
  auto Read(const Work& work) {
    const bool was_idle = engine != nullptr;
    Connect();
    try {
      engine->RequireInPlace();
    } catch (const CStoreError&) {
      Disconnect();
      throw;
    }
    try {
      return work(*repository);
    } catch (const CStoreError& error) {
      if (!was_idle || !IsDead(error)) {
        DisconnectAfter(error);
        throw;
      }
    }
    Disconnect();
    return Read(work);  // once: the connection is a new one
  }
  bool Answers();
  void Connect();
  void Disconnect();
  void DisconnectAfter(const CStoreError& error);
  bool IsDead(const CStoreError& error) const;

  const Opener open;
  const std::shared_ptr<CConnectionWatch> watch;
  std::unique_ptr<CSqlEngine> engine{};
  std::unique_ptr<CPlanRepository> repository{};
};

CPlanReader::CPlanReader(Opener open, std::shared_ptr<CAnswering> answering)
    : watch_(std::make_shared<CConnectionWatch>()),
      connection_(new Connection{std::move(open), watch_}),
      thread_(std::move(answering)) {
  // Callers on the GUI thread no longer come here while the store does not answer, so somebody has to look.
  const auto look = [connection = connection_] { return connection->Answers(); };
  thread_.SetBeat(kBeat, look, CDatabaseThread::kWhileStuck);
}

void CPlanReader::BeginStop() {
  thread_.BeginStop([connection = connection_] { connection->Disconnect(); });
}

void CPlanReader::Release() {
  thread_.Post([connection = connection_] {
    connection->Disconnect();
    return true;
  });
}

template <class Work>
auto CPlanReader::Read(Work work) {
  return thread_.Call([connection = connection_, work] { return connection->Read(work); });
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

bool CPlanReader::Connection::Answers() {
  try {
    Read([](CPlanRepository& plans) { return plans.NewestChange(); });
    return true;
  } catch (const CStoreError& error) {
    return error.GetKind() != CStoreError::kConnectionLost;
  }
}

void CPlanReader::Connection::Connect() {
  if (!engine) {
    engine = open(watch);
    repository = std::make_unique<CPlanRepository>(*engine);
  }
}

void CPlanReader::Connection::Disconnect() {
  repository.reset();
  engine.reset();
}

void CPlanReader::Connection::DisconnectAfter(const CStoreError& error) {
  if (error.GetKind() == CStoreError::kConnectionLost) {
    Disconnect();
  }
}

// A connection that lay idle may have died long ago, for instance because the server was started again: that shows with
// the next read. One that was cut because its server hangs would hang again.
bool CPlanReader::Connection::IsDead(const CStoreError& error) const {
  return error.GetKind() == CStoreError::kConnectionLost && !watch->WasCut();
}

}  // namespace TarnHost::Store
