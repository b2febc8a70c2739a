#include "pictures/stream_connection.h"

#include <QRandomGenerator>
#include <utility>

#include "pictures/reconnect_pause.h"

namespace TarnClient {

namespace {

// A camera that plays for less, again and again, is not well.
constexpr int kSteadyPauses = 10;

}  // namespace

CStreamConnection::CStreamConnection(const StreamAccess& access, const StreamTimings& timings,
                                     StreamReceivers receivers, QObject* parent)
    : QObject(parent), access_(access), timings_(timings), receivers_(std::move(receivers)), repeats_(timings.repeats) {
  retry_.setSingleShot(true);
  connect(&retry_, &QTimer::timeout, this, &CStreamConnection::AskTurn);
}

void CStreamConnection::Open() {
  AskTurn();
}

void CStreamConnection::AskTurn() {
  ConnectRank rank = ConnectRank::Failing;
  if (failed_ == 0) {
    rank = ConnectRank::First;
  } else if (failed_ == 1) {
    rank = ConnectRank::JustLost;
  }
  Q_EMIT SignalAsksTurn(rank);
}

void CStreamConnection::Begin() {
  if (closing_ || session_) {
    return;
  }
  waits_for_goodbye_ = sessions_ > 0;
  if (waits_for_goodbye_) {
    return;
  }
  session_ = new CRtspSession(access_, timings_, this);
  ++sessions_;
  connect(session_, &CRtspSession::SignalPlaying, this, &CStreamConnection::OnPlaying);
  connect(session_, &CRtspSession::SignalMedia, this, &CStreamConnection::OnMedia);
  connect(session_, &CRtspSession::SignalLost, this, &CStreamConnection::OnLost);
  connect(session_, &CRtspSession::SignalClosed, this, [this, session = session_] { OnSessionClosed(session); });
  session_->Open();
}

void CStreamConnection::OnPlaying(const VideoTrack& track) {
  ++connection_;
  playing_since_ = SteadyMs();
  payload_type_ = track.payload_type;
  builder_ = IUnitBuilder::For(track, [this](AccessUnit unit) { OnUnit(std::move(unit)); });
  clock_ = std::make_unique<CStreamClock>(track.clock_rate);
  receivers_.board->SetPlaying();
  Q_EMIT SignalTurnOver();
}

void CStreamConnection::OnMedia(const QByteArray& bytes) {
  const std::optional<RtpPacket> packet = ReadRtp(bytes);
  if (packet && packet->type == payload_type_) {
    builder_->Add(*packet);
  }
}

void CStreamConnection::OnUnit(AccessUnit unit) {
  unit.arrived_ms = SteadyMs();
  unit.taken_ms = clock_->TakenAt(unit.stamp, unit.arrived_ms);
  unit.connection = connection_;
  if (unit.has_picture) {
    OnPicture(unit);
  }
  receivers_.decoder->Push(std::move(unit));
}

void CStreamConnection::OnPicture(const AccessUnit& unit) {
  if (!session_) {
    return;  // it was just left
  }
  session_->NotePicture();
  repeats_.Take(unit);
  receivers_.board->NoteUnit(unit.arrived_ms, unit.is_key, repeats_.Repeats());
  if (receivers_.board->IsUnreadable(unit.arrived_ms)) {
    OnLost(PictureLoss::UnknownCodec);
  }
}

void CStreamConnection::OnLost(PictureLoss loss) {
  const bool was_steady = playing_since_ > 0 && SteadyMs() - playing_since_ >= kSteadyPauses * timings_.retry;
  if (was_steady) {
    failed_ = 0;
  }
  playing_since_ = 0;
  ++failed_;
  receivers_.board->SetLoss(loss);
  LeaveSession();
  Q_EMIT SignalTurnOver();
  const double chance = QRandomGenerator::global()->generateDouble();
  retry_.start(static_cast<int>(ReconnectPause(failed_, loss, chance, timings_.retry)));
}

void CStreamConnection::LeaveSession() {
  if (CRtspSession* const session = std::exchange(session_, nullptr)) {
    session->Close();
  }
}

void CStreamConnection::Close() {
  closing_ = true;
  retry_.stop();
  LeaveSession();
  Q_EMIT SignalTurnOver();
  if (sessions_ == 0) {
    Q_EMIT SignalClosed();
  }
}

void CStreamConnection::OnSessionClosed(CRtspSession* session) {
  session->deleteLater();
  --sessions_;
  if (closing_ && sessions_ == 0) {
    Q_EMIT SignalClosed();
  }
  if (std::exchange(waits_for_goodbye_, false)) {
    Begin();
  }
}

}  // namespace TarnClient
