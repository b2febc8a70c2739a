#pragma once

#include <QStringList>
#include <memory>

namespace TarnTest {

/// The lines of the client's log while it lives, as "module level line" with the source line number as "(#)".
/// Thread: GUI; lines come from any thread.
class CLogCapture {
 public:
  CLogCapture();
  ~CLogCapture();
  CLogCapture(const CLogCapture&) = delete;
  CLogCapture& operator=(const CLogCapture&) = delete;

  QStringList Lines() const;
  void Clear();

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

}  // namespace TarnTest
