#pragma once

#include <QHash>
#include <QImage>
#include <QVector>
#include <mutex>

#include "pictures/stream_facts.h"
#include "pictures/unit_queue.h"

namespace TarnClient {

/// The latest picture in each size that is shown.
using PicturesBySize = QHash<QPair<int, int>, QImage>;

/// What is known of one stream: written where it is connected and decoded, read where it is shown. Thread: any.
class CStreamBoard {
 public:
  /// `number`: that the pictures are counted on from.
  CStreamBoard(const StreamTimings& timings, qint64 number) : timings_(timings), number_(number) {}

  // Where it is connected.
  void SetPlaying();
  void SetLoss(PictureLoss loss);
  void NoteUnit(qint64 arrived_ms, bool is_key, bool repeats);
  bool IsUnreadable(qint64 now_ms) const;

  // Where it is decoded.
  /// Before each try to make a picture.
  void NoteTry();
  /// The sizes in which pictures that come as `coded` are shown; one at least.
  QVector<QSize> SizesFor(const QSize& coded) const;
  void Post(const QSize& coded, PicturesBySize pictures, qint64 taken_ms);

  // Where it is shown.
  /// What is decoded; `shed`: less than what is looked at.
  void SetMode(DecodingMode mode, bool shed);
  PictureStatus Status(qint64 now_ms) const;
  /// The picture for `viewer`, who wants it in this size from now on.
  QImage Latest(const void* viewer, const QSize& wanted);
  void Leave(const void* viewer);
  qint64 Number() const;
  /// Between two key frames; empty until that is known.
  std::optional<qint64> KeyFrameMs() const;

 private:
  const StreamTimings timings_;
  mutable std::mutex mutex_;
  StreamFacts facts_;
  PicturesBySize pictures_;
  QHash<const void*, QSize> wanted_;
  qint64 number_;
};

}  // namespace TarnClient
