#pragma once

#include <QObject>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>
#include <optional>

#include "pictures/picture_status.h"
#include "pictures/rtsp_message.h"
#include "pictures/rtsp_sign_in.h"
#include "pictures/stream_access.h"
#include "pictures/stream_description.h"
#include "pictures/stream_timings.h"

namespace TarnClient {

/// One connection to a camera, from connecting to the goodbye: RTSP over TCP or TLS, media between the messages.
/// Thread: the one it was made in.
class CRtspSession : public QObject {
  Q_OBJECT
 public:
  CRtspSession(const StreamAccess& access, const StreamTimings& timings, QObject* parent);
  ~CRtspSession() override;

  void Open();
  /// A whole picture has come: the next one is waited for from now on. Packets alone may go on without any.
  void NotePicture();
  /// Says goodbye to the camera where that knows of us, and then SignalClosed. No other signal comes after this call.
  void Close();

 Q_SIGNALS:
  void SignalPlaying(const TarnClient::VideoTrack& track);
  /// An RTP packet of the pictures, valid during the call.
  void SignalMedia(const QByteArray& packet);
  /// It is of no more use. Close() it all the same.
  void SignalLost(TarnClient::PictureLoss loss);
  void SignalClosed();

 private:
  enum class Step { Idle, Connecting, Describing, SettingUp, Starting, Playing, Lost, Leaving, Closed };

  bool Connect();
  void OnConnected();
  void OnBytes();
  bool TakePiece(const RtspPiece& piece);
  void OnMessage(const RtspMessage& message);
  void Answer(const RtspMessage& request);
  void OnAnswer(const RtspMessage& answer);
  void SignInAndRepeat(const RtspMessage& answer);
  void Redirect(const QByteArray& location);
  void OnDescribed(const RtspMessage& answer);
  void OnSetUp(const RtspMessage& answer);
  bool TakeSession(const RtspMessage& answer);
  void OnStarted();
  void OnKeptAlive(int status);
  void OnAnswerInLeaving(const RtspMessage& answer);
  void SayGoodbye();
  void OnSocketError();
  void OnDeadline();
  void Request(const QByteArray& method, const QByteArray& uri, const QByteArray& headers = {});
  void Write(const QByteArray& text);
  void KeepAlive();
  void Lose(PictureLoss loss);
  void Finish();
  bool IsOver() const { return step_ >= Step::Lost; }
  bool IsTlsUnanswered() const;

  const StreamAccess access_;
  const StreamTimings timings_;
  CRtspSignIn sign_in_;
  QUrl url_;
  QTcpSocket* socket_ = nullptr;
  CRtspReader reader_;
  Step step_ = Step::Idle;
  QTimer deadline_{this}, keep_alive_{this};
  QByteArray base_, session_, method_, uri_, headers_;  // method_ and so on: what was asked for last
  QByteArray keep_alive_method_ = "GET_PARAMETER";
  VideoTrack track_;
  int sequence_ = 0, channel_ = 0, redirects_ = 0;
  bool awaits_answer_ = false;
  bool repeated_ = false;  // the last request, with an answer to who we are
};

}  // namespace TarnClient
