#pragma once

#include <QByteArray>
#include <QPair>
#include <QVector>

namespace TarnClient {

/// A request or an answer of an RTSP server.
struct RtspMessage {
  int status = 0;     // of an answer; 0: it is a request
  QByteArray method;  // of a request
  QVector<QPair<QByteArray, QByteArray>> headers;
  QByteArray body;

  bool IsRequest() const { return status == 0; }
  /// The first header of that name in any case; blank without one.
  QByteArray Header(const char* name) const;
  QVector<QByteArray> Headers(const char* name) const;
};

/// What comes next in the bytes of a server.
struct RtspPiece {
  enum Kind {
    Incomplete,
    Message,
    Media,
    /// No RTSP, or more of it than any camera has to say. Nothing after it can be understood.
    Garbage
  };

  Kind kind = Incomplete;
  RtspMessage message;
  int channel = 0;
  QByteArray media;  // valid until more bytes are added
};

/// Takes an RTSP connection's bytes apart: messages, and media packets between them.
class CRtspReader {
 public:
  void Add(const QByteArray& bytes);
  RtspPiece Next();

 private:
  RtspPiece NextMedia();
  RtspPiece NextMessage();
  int Left() const { return bytes_.size() - at_; }

  QByteArray bytes_;
  int at_ = 0;
};

}  // namespace TarnClient
