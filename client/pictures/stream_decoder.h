#pragma once

#include <map>
#include <memory>

#include "pictures/decoding_pool.h"
#include "pictures/picture_decoder.h"
#include "pictures/picture_scaler.h"
#include "pictures/stream_board.h"
#include "pictures/unit_queue.h"

namespace TarnClient {

/// Decodes one stream, once for all who show it. Thread: any; the work is the pool's.
class CStreamDecoder : public CDecodingTask, public std::enable_shared_from_this<CStreamDecoder> {
 public:
  CStreamDecoder(std::weak_ptr<CDecodingPool> pool, std::shared_ptr<CStreamBoard> board, const StreamTimings& timings);

  void Push(AccessUnit unit);
  void SetMode(DecodingMode mode);
  /// How long the next picture has been waiting for its turn.
  qint64 WaitMs() const;

 protected:
  bool Work() override;

 private:
  void Show(const AVFrame& picture, qint64 taken_ms);

  // Weak, for a thread of the pool may be the last to hold this.
  const std::weak_ptr<CDecodingPool> pool_;
  const std::shared_ptr<CStreamBoard> board_;
  mutable std::mutex mutex_;
  CUnitQueue queue_;
  DecodingMode mode_ = DecodingMode::KeyFrames;
  // Where it works.
  CPictureDecoder decoder_;
  qint64 shown_ms_ = 0;
  std::map<std::pair<int, int>, std::unique_ptr<CPictureScaler>> scalers_;  // by width and height
};

}  // namespace TarnClient
