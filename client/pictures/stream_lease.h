#pragma once

#include <QImage>
#include <memory>

#include "pictures/picture_status.h"

namespace TarnClient {

class CLiveStream;

enum class StreamUse {
  Shown,
  /// It is to have a picture at once when it comes into sight.
  Prepared
};

/// A window's share in a stream. Thread: GUI.
class CStreamLease {
 public:
  /// `order`: its place among all leases.
  CStreamLease(std::shared_ptr<CLiveStream> stream, StreamUse use, int order);
  ~CStreamLease();
  CStreamLease(const CStreamLease&) = delete;
  CStreamLease& operator=(const CStreamLease&) = delete;

  PictureStatus Status() const;
  QImage Latest(const QSize& wanted);
  /// Of the latest picture; -1 while there is none.
  qint64 Number();
  void SetInFocus(bool in_focus) { in_focus_ = in_focus; }
  bool IsInFocus() const { return in_focus_; }
  int Order() const { return order_; }
  /// Whether pictures were asked for lately: a hidden window asks for none.
  bool IsLookedAt(qint64 now_ms) const;

 private:
  void Look();

  const std::shared_ptr<CLiveStream> stream_;
  const StreamUse use_;
  const int order_;
  bool in_focus_ = false;
  qint64 looked_ms_;
};

}  // namespace TarnClient
