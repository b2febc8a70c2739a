#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace TarnHost::Store {

/// Cuts a connection whose server takes too long, so that the thread that waits for it gets an error instead. The
/// system finds out by itself about a server that is gone, never about one that hangs.
///
/// Thread: the connection's; Cut() and WasCut() from any.
class CConnectionWatch {
 public:
  using Clock = std::chrono::steady_clock;

  CConnectionWatch() = default;
  ~CConnectionWatch();

  /// The connection stands, over this socket.
  void Attach(int socket);
  void Detach();

  /// Cuts the connection at once, and every later one.
  void Cut();
  /// Whether the connection was cut since it stood.
  bool WasCut() const { return was_cut_; }

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
  void Run();
  void CutNow();

  std::atomic<Clock::rep> deadline_{0};  // of the present wait; 0 when there is none
  std::atomic<bool> was_cut_{false};
  std::mutex mutex_;
  std::condition_variable wake_;
  int socket_ = -1;  // a handle of our own: its number is not given to others while we look at it
  bool closed_ = false, ending_ = false;
  std::thread thread_;
};

}  // namespace TarnHost::Store
