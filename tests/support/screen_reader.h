#pragma once

#include <QAccessible>
#include <QStringList>

namespace TarnTest {

/// As long as it lives, assistive technology listens: what it hears is written down. One at a time. Thread: GUI.
class CScreenReader {
 public:
  CScreenReader();
  ~CScreenReader();
  CScreenReader(const CScreenReader&) = delete;
  CScreenReader& operator=(const CScreenReader&) = delete;

  /// The names of the objects that such an event came from, in order.
  QStringList Heard(QAccessible::Event kind) const;
  QStringList Heard(QAccessible::Event kind, QAccessible::Role role) const;
  void Forget();
};

}  // namespace TarnTest
