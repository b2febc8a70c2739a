#include "site/stream_trials.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "pictures/stream_supply.h"

namespace TarnClient {

namespace {

/// Each trial counts as a camera of its own, whose address is known here alone.
class CTrialAddresses {
 public:
  std::string Add(const CameraTrial& trial) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const std::string code = "trial " + std::to_string(++last_);
    CameraStreams streams;
    streams.state = CameraStreams::Known;
    streams.Of(StreamKind::Main) = StreamAccess{QString::fromStdString(trial.url), QString::fromStdString(trial.user),
                                                trial.secret, QByteArray::fromStdString(trial.authority)};
    known_[code] = std::move(streams);
    return code;
  }
  /// Once: no password is kept for longer than need be.
  std::optional<CameraStreamsByCode> Take(const std::vector<std::string>& codes) {
    const std::lock_guard<std::mutex> lock(mutex_);
    CameraStreamsByCode taken;
    for (const std::string& code : codes) {
      const auto found = known_.find(code);
      if (found != known_.end()) {
        taken.insert(std::move(*found));
        known_.erase(found);
      }
    }
    return taken;
  }

 private:
  std::mutex mutex_;
  CameraStreamsByCode known_;
  int last_ = 0;
};

struct Trials {
  const std::shared_ptr<CTrialAddresses> addresses = std::make_shared<CTrialAddresses>();
  std::unique_ptr<CStreamSupply> supply;
};

}  // namespace

CCameraTrials::OpenTrial StreamTrials() {
  return [trials = std::make_shared<Trials>()](const CameraTrial& trial) {
    if (!trials->supply) {
      CStreamSupply::Setup setup;
      setup.addresses = [addresses = trials->addresses](const std::vector<std::string>& codes) {
        return addresses->Take(codes);
      };
      setup.threads = 1;
      trials->supply = std::make_unique<CStreamSupply>(std::move(setup));
    }
    view_plugin_protocol::PlanWindow window;
    window.resource_code = trials->addresses->Add(trial);
    return trials->supply->Open(window);
  };
}

}  // namespace TarnClient
