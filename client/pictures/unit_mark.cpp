#include "pictures/unit_mark.h"

#include <QHash>

namespace TarnClient {

namespace {

// The head of a slice carries numbers of changing length; it is behind that, as far as can be said without reading it.
constexpr int kLongestSliceHead = 24, kStep = 16, kStartCode = 4;
constexpr int kH264LastPicture = 5, kH265FirstNoPicture = 32;

bool IsSlice(VideoCodec codec, char first) {
  if (codec == VideoCodec::H264) {
    const int type = first & 0x1f;
    return type > 0 && type <= kH264LastPicture;
  }
  return (first >> 1 & 0x3f) < kH265FirstNoPicture;
}

// Of the next part of a picture: three zeros and a one; the size of all where there is none. Most bytes are not looked
// at, for this is done for every picture of every camera.
int FindStartCode(const QByteArray& bytes, int from) {
  const char* const data = bytes.constData();
  for (int at = from; at + kStartCode <= bytes.size();) {
    const auto last = static_cast<unsigned char>(data[at + kStartCode - 1]);
    if (last > 1) {
      at += kStartCode;
    } else if (last == 1 && data[at] == 0 && data[at + 1] == 0 && data[at + 2] == 0) {
      return at;
    } else {
      ++at;
    }
  }
  return bytes.size();
}

/// Of pieces, one after the other.
class CMark {
 public:
  void Add(const QByteArray& bytes, int from, int end) {
    hash_ = qHashBits(bytes.constData() + from, static_cast<size_t>(end - from), hash_);
    length_ += static_cast<quint32>(end - from);
  }
  // Counted from its end, where nothing moves when the head becomes longer.
  void AddSlice(const QByteArray& bytes, int begin, int end) {
    const int behind_head = end - begin - kLongestSliceHead;
    if (behind_head >= kStep) {
      begin = end - behind_head / kStep * kStep;
    }
    Add(bytes, begin, end);
  }
  quint64 Value() const { return static_cast<quint64>(length_) << 32 | hash_; }

 private:
  uint hash_ = 1;
  quint32 length_ = 0;
};

}  // namespace

quint64 MarkOf(const AccessUnit& unit) {
  CMark mark;
  if (unit.codec != VideoCodec::H264 && unit.codec != VideoCodec::H265) {
    mark.Add(unit.bytes, 0, unit.bytes.size());
    return mark.Value();
  }
  for (int begin = FindStartCode(unit.bytes, 0); begin < unit.bytes.size();) {
    begin += kStartCode;
    const int end = FindStartCode(unit.bytes, begin);
    if (begin < end && IsSlice(unit.codec, unit.bytes[begin])) {
      mark.AddSlice(unit.bytes, begin, end);
    }
    begin = end;
  }
  return mark.Value();
}

}  // namespace TarnClient
