#pragma once

#include <QObject>
#include <QTimer>
#include <memory>

#include "pictures/connect_gate.h"
#include "pictures/repeat_watch.h"
#include "pictures/rtsp_session.h"
#include "pictures/stream_board.h"
#include "pictures/stream_clock.h"
#include "pictures/stream_decoder.h"
#include "pictures/unit_builder.h"

namespace TarnClient {

/// Who a stream's pictures and troubles go to.
struct StreamReceivers {
  std::shared_ptr<CStreamBoard> board;
  std::shared_ptr<CStreamDecoder> decoder;
};

/// Keeps one stream connected: session after session, each after a pause, until it is closed. Thread: the network's.
class CStreamConnection : public QObject {
  Q_OBJECT
 public:
  CStreamConnection(const StreamAccess& access, const StreamTimings& timings, StreamReceivers receivers,
                    QObject* parent);

  void Open();
  /// It may connect now, see SignalAsksTurn().
  void Begin();
  /// Says goodbye, and then SignalClosed.
  void Close();

 Q_SIGNALS:
  /// It wants to connect.
  void SignalAsksTurn(TarnClient::ConnectRank rank);
  /// It is connecting no longer, with or without success.
  void SignalTurnOver();
  void SignalClosed();

 private:
  void AskTurn();
  void OnPlaying(const VideoTrack& track);
  void OnMedia(const QByteArray& bytes);
  void OnUnit(AccessUnit unit);
  void OnPicture(const AccessUnit& unit);
  void OnLost(PictureLoss loss);
  void OnSessionClosed(CRtspSession* session);
  void LeaveSession();

  const StreamAccess access_;
  const StreamTimings timings_;
  const StreamReceivers receivers_;
  CRtspSession* session_ = nullptr;  // the one in use
  int sessions_ = 0;                 // with those that say goodbye
  bool closing_ = false;
  bool waits_for_goodbye_ = false;  // to begin: many cameras serve but one viewer or two
  int connection_ = 0, failed_ = 0;
  qint64 playing_since_ = 0;
  int payload_type_ = -1;
  std::unique_ptr<IUnitBuilder> builder_;
  std::unique_ptr<CStreamClock> clock_;
  CRepeatWatch repeats_;  // over all sessions: a camera that stands still may lose its connection now and then
  QTimer retry_{this};
};

}  // namespace TarnClient
