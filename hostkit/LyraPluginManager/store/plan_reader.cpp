#include "store/plan_reader.h"

#include <utility>

namespace TarnHost::Store {
namespace {

constexpr std::chrono::milliseconds kBeat{500};

}  // namespace

CPlanReader::CPlanReader(CReaderConnection::Opener open, std::shared_ptr<CAnswering> answering)
    : watch_(std::make_shared<CConnectionWatch>()),
      connection_(std::make_shared<CReaderConnection>(std::move(open), watch_)),
      thread_(std::move(answering)) {
  // Callers on the GUI thread no longer come here while the store does not answer, so somebody has to look.
  thread_.SetBeat(kBeat, [connection = connection_](bool is_stuck) {
    if (is_stuck) {
      return connection->Answers();
    }
    connection->Rest();
    return false;
  });
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

}  // namespace TarnHost::Store
