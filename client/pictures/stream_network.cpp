#include "pictures/stream_network.h"

#include <QSemaphore>
#include <memory>

namespace TarnClient {

namespace {

constexpr int kMomentMs = 300;

}  // namespace

CStreamNetwork::CStreamNetwork(const StreamTimings& timings) : timings_(timings), desk_(new CConnectionDesk(timings)) {
  thread_.setObjectName(QStringLiteral("cameras"));
  desk_->moveToThread(&thread_);
  QObject::connect(&thread_, &QThread::finished, desk_, &QObject::deleteLater);
  thread_.start();
}

CStreamNetwork::~CStreamNetwork() {
  const auto closed = std::make_shared<QSemaphore>();
  QMetaObject::invokeMethod(desk_, [desk = desk_, closed] { desk->CloseAll([closed] { closed->release(); }); });
  closed->tryAcquire(1, static_cast<int>(timings_.goodbye) + kMomentMs);
  thread_.quit();
  thread_.wait();
}

int CStreamNetwork::Open(const StreamAccess& access, const StreamReceivers& receivers, int after) {
  const int id = ++last_id_;
  QMetaObject::invokeMethod(desk_, [=, desk = desk_] { desk->Open(id, access, receivers, after); });
  return id;
}

void CStreamNetwork::Close(int id) {
  QMetaObject::invokeMethod(desk_, [desk = desk_, id] { desk->Close(id); });
}

}  // namespace TarnClient
