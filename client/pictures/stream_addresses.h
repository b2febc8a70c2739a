#pragma once

#include <QObject>
#include <QTimer>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host_calls/call_scope.h"
#include "pictures/stream_access.h"

namespace TarnClient {

/// How the streams of one camera are reached.
struct CameraStreams {
  enum State {
    /// It is being asked for.
    Unknown,
    /// It belongs to a pretended site, which has no real pictures.
    Drawn,
    /// The site knows no address.
    NoAddress,
    /// How to sign in there, or its address, is known to the store alone, which does not answer.
    NeedsStore,
    /// The site does not have the camera, or has it no more.
    Removed,
    Known
  };

  State state = Unknown;
  std::array<std::optional<StreamAccess>, 2> streams;  // by StreamKind

  const std::optional<StreamAccess>& Of(StreamKind kind) const { return streams[static_cast<size_t>(kind)]; }
  std::optional<StreamAccess>& Of(StreamKind kind) { return streams[static_cast<size_t>(kind)]; }
};

using CameraStreamsByCode = std::map<std::string, CameraStreams>;

/// Reads how these cameras are reached, on any thread; one that the site does not have is left out. Empty when the site
/// does not answer.
using StreamAddressReader = std::function<std::optional<CameraStreamsByCode>(const std::vector<std::string>& cameras)>;

/// The addresses of the cameras that are shown, asked for off the GUI thread. Thread: GUI.
class CStreamAddresses : public QObject {
  Q_OBJECT
 public:
  explicit CStreamAddresses(StreamAddressReader reader, QObject* parent = nullptr);

  /// Asks when it does not know the camera yet.
  const CameraStreams& Of(const std::string& camera);
  const CameraStreamsByCode& All() const { return known_; }
  /// Asks again for all that it knows: something has changed.
  void Renew();

 Q_SIGNALS:
  void SignalRead();

 private:
  void AskSoon();
  void Ask();
  void Take(const std::vector<std::string>& asked, const CameraStreamsByCode& read);

  const StreamAddressReader reader_;
  CameraStreamsByCode known_;
  std::set<std::string> wanted_;  // to be asked for
  QTimer soon_{this};
  HostCalls::CCallScope question_;
};

}  // namespace TarnClient
