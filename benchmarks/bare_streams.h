#pragma once

#include <QSize>
#include <QStringList>
#include <atomic>
#include <thread>
#include <vector>

/// What showing streams costs at the least: libav reads, decodes and scales each in a loop of its own, and the picture
/// is drawn into an image of the window's size. No clock, no words, no window.
class BareStreams {
 public:
  BareStreams(const QStringList& urls, const QSize& window);
  ~BareStreams();
  BareStreams(const BareStreams&) = delete;
  BareStreams& operator=(const BareStreams&) = delete;

  /// Pictures drawn since the start.
  int Drawn() const { return drawn_; }

 private:
  void Run(const QByteArray& url, const QSize& window);

  std::atomic<bool> ends_{false};
  std::atomic<int> drawn_{0};
  std::vector<std::thread> threads_;
};
