#pragma once

#include <QStringList>

namespace TarnTest {

/// Collects Qt's warnings and worse while it lives; all of them still reach the handler before it.
/// Thread: made and destroyed on the GUI thread, one at a time; messages come from any thread.
class CMessageGuard {
 public:
  CMessageGuard();
  ~CMessageGuard();
  CMessageGuard(const CMessageGuard&) = delete;
  CMessageGuard& operator=(const CMessageGuard&) = delete;

  /// A warning that contains `part` is expected from now on.
  void Expect(const QString& part);
  QStringList Unexpected() const;
};

}  // namespace TarnTest
