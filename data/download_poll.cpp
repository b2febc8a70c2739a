#include "download_poll.h"

#include <QCoreApplication>
#include <QThreadPool>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "host_calls/ask.h"

namespace TarnPlanView {

namespace {
constexpr std::chrono::milliseconds kPollInterval{200};
}

/// What the waiting task shares with the poll; outlives both.
class CDownloadPoll::State {
 public:
  void Stop() {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      stopped_ = true;
    }
    wake_.notify_all();
  }

  bool IsStopped() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return stopped_;
  }

  /// Waits one interval, or until stopped. Another task may use the pool's thread in the meantime.
  void WaitInterval() {
    HostCalls::CallPool().releaseThread();
    {
      std::unique_lock<std::mutex> lock(mutex_);
      wake_.wait_for(lock, kPollInterval, [this] { return stopped_; });
    }
    HostCalls::CallPool().reserveThread();
  }

 private:
  std::mutex mutex_;
  std::condition_variable wake_;
  bool stopped_ = false;
};

CDownloadPoll::CDownloadPoll(QObject* parent) : QObject(parent) {
  if (QCoreApplication::instance()) {
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &CDownloadPoll::Stop);
  }
}

CDownloadPoll::~CDownloadPoll() {
  Stop();
}

void CDownloadPoll::Start(std::function<void()> finished) {
  Stop();
  const auto state = std::make_shared<State>();
  state_ = state;
  const auto task = [state] {
    auto& host = LyraPluginManager::CViewBusinessInterfaceMgr::Instance();
    while (!state->IsStopped() && !host.IsViewResourceDownFinish()) {
      state->WaitInterval();
    }
    return true;
  };
  HostCalls::Ask(task).Then(this, [state, finished = std::move(finished)](bool) {
    if (!state->IsStopped()) {
      finished();
    }
  });
}

void CDownloadPoll::Stop() {
  if (state_) {
    state_->Stop();
    state_.reset();
  }
}

}  // namespace TarnPlanView
