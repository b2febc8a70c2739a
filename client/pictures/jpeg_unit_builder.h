#pragma once

#include <QHash>

#include "pictures/unit_builder.h"

namespace TarnClient {

/// JPEG pictures as RFC 2435 sends them: without their heads, which are made again here.
class CJpegUnitBuilder : public IUnitBuilder {
 public:
  CJpegUnitBuilder(const VideoTrack& track, Receiver receiver);
  void Add(const RtpPacket& packet) override;

 private:
  bool Begin(const QByteArray& payload, int at);
  QByteArray TablesOf(int quality, const QByteArray& sent);
  void Finish();
  void Drop();

  const QSize size_;
  const Receiver receiver_;
  QHash<int, QByteArray> tables_;  // by quality
  QByteArray bytes_;
  int scan_at_ = 0;  // where the coded picture begins behind its head
  quint32 stamp_ = 0;
};

}  // namespace TarnClient
