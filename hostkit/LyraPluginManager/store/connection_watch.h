#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace TarnHost::Store {

/// Cuts a connection whose server takes too long, so that the thread that waits for it gets an error instead. The
/// system finds out by itself about a server that is gone, never about one that hangs.
///
/// Thread: the connection's; Cut() and WasCut() from any.
class CConnectionWatch {
 public:
  using Clock = std::chrono::steady_clock;

  CConnectionWatch();
  ~CConnectionWatch();

  /// `on_silence` is called, on a thread of the watch, when somebody has waited for the server for so long that a user
  /// should know of it; once in each wait. Before Attach().
  void SetOnSilence(std::function<void()> on_silence);

  /// The connection stands, over this socket.
  void Attach(int socket);
  void Detach();

  /// Cuts the connection at once, and every later one.
  void Cut();
  /// Whether the connection was cut since it stood.
  bool WasCut() const;

  /// The connection waits for its server as long as this lives, or since the last sign of life of it.
  class CWait {
   public:
    explicit CWait(CConnectionWatch* watch) : watch_(watch) { Renew(); }
    ~CWait();
    CWait(const CWait&) = delete;
    CWait& operator=(const CWait&) = delete;
    void Renew();

   private:
    CConnectionWatch* const watch_;  // null for what cannot hang
  };

 private:
  class CLook;

  const std::shared_ptr<CLook> look_;
  std::thread thread_;
};

}  // namespace TarnHost::Store
