#include "pictures/rtsp_message.h"

#include <QList>

namespace TarnClient {

namespace {

constexpr int kLongestHead = 16 * 1024, kLongestBody = 256 * 1024, kMediaHead = 4;
constexpr char kProtocol[] = "RTSP/";

RtspPiece Garbage() {
  RtspPiece piece;
  piece.kind = RtspPiece::Garbage;
  return piece;
}

// False when it is none.
bool ReadFirstLine(const QByteArray& line, RtspMessage* message) {
  const QList<QByteArray> words = line.split(' ');
  if (words.size() >= 2 && words[0].startsWith(kProtocol)) {
    message->status = words[1].toInt();
    return message->status >= 100 && message->status <= 999;
  }
  if (words.size() == 3 && words[2].startsWith(kProtocol)) {
    message->method = words[0];
    return true;
  }
  return false;
}

bool ReadHead(const QByteArray& head, RtspMessage* message) {
  QList<QByteArray> lines = head.split('\n');
  if (!ReadFirstLine(lines.takeFirst().trimmed(), message)) {
    return false;
  }
  for (const QByteArray& line : qAsConst(lines)) {
    const int colon = line.indexOf(':');
    if (colon > 0) {
      message->headers.append({line.left(colon).trimmed(), line.mid(colon + 1).trimmed()});
    }
  }
  return true;
}

// Where the blank line ends and how long the head is; -1 for both while it has not come.
struct HeadEnd {
  int length = -1, body = -1;
};

// No further than any head goes: there may be thousands of messages behind it.
HeadEnd FindHeadEnd(const QByteArray& bytes, int from) {
  for (int end = bytes.indexOf('\n', from); end >= 0 && end - from <= kLongestHead;
       end = bytes.indexOf('\n', end + 1)) {
    const char* const next = bytes.constData() + end + 1;  // a byte array ends with a zero
    if (next[0] == '\n') {
      return {end - from, end + 2};
    }
    if (next[0] == '\r' && next[1] == '\n') {
      return {end - from, end + 3};
    }
  }
  return {};
}

}  // namespace

QByteArray RtspMessage::Header(const char* name) const {
  return Headers(name).value(0);
}

QVector<QByteArray> RtspMessage::Headers(const char* name) const {
  QVector<QByteArray> values;
  for (const auto& header : headers) {
    if (qstricmp(header.first.constData(), name) == 0) {
      values.append(header.second);
    }
  }
  return values;
}

void CRtspReader::Add(const QByteArray& bytes) {
  bytes_.remove(0, at_);
  at_ = 0;
  bytes_.append(bytes);
}

RtspPiece CRtspReader::Next() {
  // Some servers put an empty line between two messages.
  while (Left() > 0 && (bytes_[at_] == '\r' || bytes_[at_] == '\n')) {
    ++at_;
  }
  if (Left() == 0) {
    return {};
  }
  if (bytes_[at_] == '$') {
    return NextMedia();
  }
  return NextMessage();
}

RtspPiece CRtspReader::NextMedia() {
  if (Left() < kMediaHead) {
    return {};
  }
  const auto byte = [this](int offset) { return static_cast<unsigned char>(bytes_[at_ + offset]); };
  const int length = byte(2) << 8 | byte(3);
  if (Left() < kMediaHead + length) {
    return {};
  }
  RtspPiece piece;
  piece.kind = RtspPiece::Media;
  piece.channel = byte(1);
  piece.media = QByteArray::fromRawData(bytes_.constData() + at_ + kMediaHead, length);
  at_ += kMediaHead + length;
  return piece;
}

RtspPiece CRtspReader::NextMessage() {
  const char first = bytes_[at_];
  if (first < 'A' || first > 'Z') {
    return Garbage();
  }
  const HeadEnd end = FindHeadEnd(bytes_, at_);
  if (end.length < 0 && Left() > kLongestHead) {
    return Garbage();
  }
  if (end.length < 0) {
    return {};
  }
  RtspPiece piece;
  if (!ReadHead(bytes_.mid(at_, end.length), &piece.message)) {
    return Garbage();
  }
  const int length = piece.message.Header("Content-Length").toInt();
  if (length < 0 || length > kLongestBody) {
    return Garbage();
  }
  if (bytes_.size() < end.body + length) {
    return {};
  }
  piece.kind = RtspPiece::Message;
  piece.message.body = bytes_.mid(end.body, length);
  at_ = end.body + length;
  return piece;
}

}  // namespace TarnClient
