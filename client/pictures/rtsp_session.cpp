#include "pictures/rtsp_session.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslSocket>

namespace TarnClient {

namespace {

constexpr int kPort = 554, kTlsPort = 322, kMostRedirects = 3;
constexpr int kUsualTimeoutS = 60, kShortestTimeoutS = 10, kLongestTimeoutS = 3600;
constexpr qint64 kMostUnsent = 64 * 1024;
constexpr char kPlain[] = "rtsp", kEncrypted[] = "rtsps";

QUrl ReadUrl(const QString& text) {
  QUrl url(text.trimmed());
  const QString scheme = url.scheme().toLower();
  if (!url.isValid() || url.host().isEmpty() ||
      (scheme != QLatin1String(kPlain) && scheme != QLatin1String(kEncrypted))) {
    return QUrl();
  }
  url.setUserInfo(QString());
  url.setFragment(QString());
  return url;
}

bool IsTls(const QUrl& url) {
  return url.scheme().toLower() == QLatin1String(kEncrypted);
}

quint16 PortOf(const QUrl& url) {
  if (IsTls(url)) {
    return static_cast<quint16>(url.port(kTlsPort));
  }
  return static_cast<quint16>(url.port(kPort));
}

QSslSocket* TlsSocket(const QByteArray& authority, QObject* parent) {
  auto* socket = new QSslSocket(parent);
  QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
  if (!authority.isEmpty()) {
    tls.setCaCertificates(QSslCertificate::fromData(authority, QSsl::Pem));
  }
  tls.setPeerVerifyMode(QSslSocket::VerifyPeer);
  socket->setSslConfiguration(tls);
  return socket;
}

// "1234;timeout=60"
int TimeoutIn(const QByteArray& session) {
  const int at = session.toLower().indexOf("timeout=");
  if (at < 0) {
    return kUsualTimeoutS;
  }
  const int asked = session.mid(at + 8).split(';').first().trimmed().toInt();
  return qBound(kShortestTimeoutS, asked, kLongestTimeoutS);
}

bool IsSamePlace(const QUrl& one, const QUrl& other) {
  return one.host() == other.host() && PortOf(one) == PortOf(other);
}

qint64 Unsent(const QTcpSocket& socket) {
  qint64 unsent = socket.bytesToWrite();
  if (const auto* tls = qobject_cast<const QSslSocket*>(&socket)) {
    unsent += tls->encryptedBytesToWrite();
  }
  return unsent;
}

// "RTP/AVP/TCP;unicast;interleaved=0-1"; the camera may have chosen another channel.
int ChannelIn(const QByteArray& transport) {
  const int at = transport.indexOf("interleaved=");
  if (at < 0) {
    return 0;
  }
  return transport.mid(at + 12).split('-').first().toInt();
}

PictureLoss LossOf(int status) {
  switch (status) {
    case 400:
    case 451:
      return PictureLoss::BadAddress;
    case 401:
    case 403:
    case 407:
      return PictureLoss::WrongPassword;
    case 404:
    case 405:
    case 410:
    case 415:
      return PictureLoss::NoSuchStream;
    case 454:
      return PictureLoss::Ended;
    default:
      return PictureLoss::Refused;
  }
}

}  // namespace

CRtspSession::CRtspSession(const StreamAccess& access, const StreamTimings& timings, QObject* parent)
    : QObject(parent),
      access_(access),
      timings_(timings),
      sign_in_(access.user, access.secret),
      url_(ReadUrl(access.url)) {
  deadline_.setSingleShot(true);
  connect(&deadline_, &QTimer::timeout, this, &CRtspSession::OnDeadline);
  connect(&keep_alive_, &QTimer::timeout, this, &CRtspSession::KeepAlive);
}

CRtspSession::~CRtspSession() = default;

void CRtspSession::Open() {
  deadline_.start(static_cast<int>(timings_.open));
  if (!Connect()) {
    Lose(PictureLoss::BadAddress);
  }
}

bool CRtspSession::Connect() {
  if (socket_) {
    socket_->disconnect(this);
    socket_->abort();
    socket_->deleteLater();
    socket_ = nullptr;
  }
  if (!url_.isValid() || url_.host().isEmpty()) {
    return false;
  }
  reader_ = CRtspReader();
  step_ = Step::Connecting;
  if (IsTls(url_)) {
    QSslSocket* tls = TlsSocket(access_.authority, this);
    socket_ = tls;
    connect(tls, &QSslSocket::encrypted, this, &CRtspSession::OnConnected);
  } else {
    socket_ = new QTcpSocket(this);
    connect(socket_, &QTcpSocket::connected, this, &CRtspSession::OnConnected);
  }
  connect(socket_, &QTcpSocket::readyRead, this, &CRtspSession::OnBytes);
  // Later: a socket in the middle of failing does not take a goodbye well.
  const auto fail = [this, socket = socket_] {
    if (socket == socket_) {
      OnSocketError();
    }
  };
  connect(socket_, &QTcpSocket::errorOccurred, this, fail, Qt::QueuedConnection);
  if (IsTls(url_)) {
    static_cast<QSslSocket*>(socket_)->connectToHostEncrypted(url_.host(), PortOf(url_));
  } else {
    socket_->connectToHost(url_.host(), PortOf(url_));
  }
  return true;
}

void CRtspSession::OnConnected() {
  socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  step_ = Step::Describing;
  base_ = url_.toEncoded();
  Request("DESCRIBE", base_, "Accept: application/sdp\r\n");
}

void CRtspSession::Request(const QByteArray& method, const QByteArray& uri, const QByteArray& headers) {
  method_ = method;
  uri_ = uri;
  headers_ = headers;
  awaits_answer_ = true;
  QByteArray text = method + ' ' + uri + " RTSP/1.0\r\nCSeq: " + QByteArray::number(++sequence_) +
                    "\r\nUser-Agent: TarnPlanView\r\n" + headers;
  if (!session_.isEmpty()) {
    text += "Session: " + session_ + "\r\n";
  }
  const QByteArray who = sign_in_.Header(method, uri);
  if (!who.isEmpty()) {
    text += "Authorization: " + who + "\r\n";
  }
  Write(text + "\r\n");
}

// A camera that goes on asking and reads no answer is left, before what waits for it fills the memory.
void CRtspSession::Write(const QByteArray& text) {
  if (Unsent(*socket_) > kMostUnsent) {
    return Lose(PictureLoss::NoAnswer);
  }
  socket_->write(text);
}

void CRtspSession::OnBytes() {
  QTcpSocket* const socket = socket_;
  reader_.Add(socket->readAll());
  while (socket == socket_ && step_ != Step::Closed && TakePiece(reader_.Next())) {
  }
}

// Whether there may be more.
bool CRtspSession::TakePiece(const RtspPiece& piece) {
  switch (piece.kind) {
    case RtspPiece::Incomplete:
      return false;
    case RtspPiece::Garbage:
      Lose(PictureLoss::NoAnswer);
      return false;
    case RtspPiece::Media:
      // Some cameras send before they have said that they do.
      if (step_ == Step::Playing && piece.channel == channel_) {
        Q_EMIT SignalMedia(piece.media);
      }
      return true;
    case RtspPiece::Message:
      OnMessage(piece.message);
      return true;
  }
  return false;
}

void CRtspSession::OnMessage(const RtspMessage& message) {
  if (message.IsRequest()) {
    return Answer(message);
  }
  const QByteArray sequence = message.Header("CSeq");
  const bool is_ours = sequence.isEmpty() || sequence.toInt() == sequence_;
  if (message.status >= 200 && awaits_answer_ && is_ours) {
    awaits_answer_ = false;
    OnAnswer(message);
  }
}

void CRtspSession::Answer(const RtspMessage& request) {
  Write("RTSP/1.0 200 OK\r\nCSeq: " + request.Header("CSeq") + "\r\n\r\n");
}

void CRtspSession::OnAnswer(const RtspMessage& answer) {
  if (step_ == Step::Leaving) {
    return OnAnswerInLeaving(answer);
  }
  if (answer.status == 401) {
    return SignInAndRepeat(answer);
  }
  repeated_ = false;
  if (step_ == Step::Playing) {
    return OnKeptAlive(answer.status);
  }
  if (answer.status >= 400) {
    return Lose(LossOf(answer.status));
  }
  if (answer.status >= 300) {
    return Redirect(answer.Header("Location"));
  }
  switch (step_) {
    case Step::Describing:
      return OnDescribed(answer);
    case Step::SettingUp:
      return OnSetUp(answer);
    case Step::Starting:
      return OnStarted();
    default:
      return;
  }
}

void CRtspSession::SignInAndRepeat(const RtspMessage& answer) {
  switch (sign_in_.Take(answer.Headers("WWW-Authenticate"), repeated_)) {
    case CRtspSignIn::Answer::CanAnswer:
      repeated_ = true;
      return Request(method_, uri_, headers_);
    case CRtspSignIn::Answer::Refused:
      return Lose(PictureLoss::WrongPassword);
    case CRtspSignIn::Answer::UnknownWay:
      return Lose(PictureLoss::UnknownDigest);
  }
}

// The password is for the camera that it was entered for, and what is encrypted stays so. Behind one host other ports
// may be other cameras, and each says for itself how it wants to be signed in to.
void CRtspSession::Redirect(const QByteArray& location) {
  const QUrl url = ReadUrl(QString::fromUtf8(location));
  const bool loses_cover = IsTls(url_) && !IsTls(url);
  if (step_ != Step::Describing || ++redirects_ > kMostRedirects || loses_cover) {
    return Lose(PictureLoss::BadAddress);
  }
  sign_in_ = CRtspSignIn(QString(), TarnHost::CSecret());
  if (IsSamePlace(url, url_)) {
    sign_in_ = CRtspSignIn(access_.user, access_.secret);
  }
  repeated_ = false;
  url_ = url;
  if (!Connect()) {
    Lose(PictureLoss::BadAddress);
  }
}

void CRtspSession::OnDescribed(const RtspMessage& answer) {
  const std::optional<VideoTrack> track = ReadDescription(answer.body);
  if (!track) {
    return Lose(PictureLoss::NoSuchStream);
  }
  if (track->codec == VideoCodec::Unknown) {
    return Lose(PictureLoss::UnknownCodec);
  }
  track_ = *track;
  for (const char* name : {"Content-Location", "Content-Base"}) {
    const QByteArray base = answer.Header(name);
    if (base.startsWith(kPlain)) {
      base_ = base;
    }
  }
  step_ = Step::SettingUp;
  Request("SETUP", TrackUrl(base_, track_.control), "Transport: RTP/AVP/TCP;unicast;interleaved=0-1\r\n");
}

void CRtspSession::OnSetUp(const RtspMessage& answer) {
  const QByteArray transport = answer.Header("Transport");
  if (!TakeSession(answer) || (!transport.isEmpty() && !transport.contains("TCP"))) {
    return Lose(PictureLoss::Refused);
  }
  channel_ = ChannelIn(transport);
  keep_alive_.start(TimeoutIn(answer.Header("Session")) * 1000 / 2);
  step_ = Step::Starting;
  Request("PLAY", base_, "Range: npt=0.000-\r\n");
}

bool CRtspSession::TakeSession(const RtspMessage& answer) {
  session_ = answer.Header("Session").split(';').first().trimmed();
  return !session_.isEmpty();
}

void CRtspSession::OnStarted() {
  step_ = Step::Playing;
  deadline_.start(static_cast<int>(timings_.read));
  Q_EMIT SignalPlaying(track_);
}

void CRtspSession::NotePicture() {
  if (step_ == Step::Playing) {
    deadline_.start();
  }
}

// Servers that do not know the usual request take one that all know.
void CRtspSession::OnKeptAlive(int status) {
  if (status == 454) {
    return Lose(PictureLoss::Ended);
  }
  if (status >= 400) {
    keep_alive_method_ = "OPTIONS";
  }
}

void CRtspSession::KeepAlive() {
  if (step_ == Step::Playing) {
    Request(keep_alive_method_, base_);
  }
}

void CRtspSession::OnSocketError() {
  const auto* tls = qobject_cast<QSslSocket*>(socket_);
  if (tls && !tls->sslHandshakeErrors().isEmpty()) {
    return Lose(PictureLoss::Certificate);
  }
  if (step_ == Step::Playing) {
    return Lose(PictureLoss::Ended);
  }
  if (step_ == Step::Connecting && !IsTlsUnanswered()) {
    return Lose(PictureLoss::NotReachable);
  }
  Lose(PictureLoss::NoAnswer);
}

// Someone is there, but speaks no TLS.
bool CRtspSession::IsTlsUnanswered() const {
  return IsTls(url_) && (socket_->error() == QAbstractSocket::SslHandshakeFailedError ||
                         socket_->error() == QAbstractSocket::RemoteHostClosedError);
}

void CRtspSession::OnDeadline() {
  const bool never_connected = step_ == Step::Connecting && socket_->state() != QAbstractSocket::ConnectedState;
  if (never_connected) {
    return Lose(PictureLoss::NotReachable);
  }
  Lose(PictureLoss::NoAnswer);
}

void CRtspSession::Lose(PictureLoss loss) {
  if (IsOver()) {
    return Finish();
  }
  step_ = Step::Lost;
  deadline_.stop();
  keep_alive_.stop();
  Q_EMIT SignalLost(loss);
}

void CRtspSession::Close() {
  if (step_ >= Step::Leaving) {
    return;
  }
  const bool waits_for_session = method_ == "SETUP" && awaits_answer_;
  step_ = Step::Leaving;
  keep_alive_.stop();
  disconnect(this, &CRtspSession::SignalMedia, nullptr, nullptr);
  const bool is_connected = socket_ && socket_->state() == QAbstractSocket::ConnectedState;
  if (!is_connected || (session_.isEmpty() && !waits_for_session)) {
    return Finish();
  }
  deadline_.start(static_cast<int>(timings_.goodbye));
  if (!session_.isEmpty()) {
    SayGoodbye();
  }
}

void CRtspSession::SayGoodbye() {
  repeated_ = false;
  Request("TEARDOWN", base_);
}

// Cameras with a nonce for each request refuse the goodbye once, too.
void CRtspSession::OnAnswerInLeaving(const RtspMessage& answer) {
  if (answer.status == 401) {
    return SignInAndRepeat(answer);
  }
  if (method_ == "TEARDOWN" || !TakeSession(answer)) {
    return Finish();
  }
  SayGoodbye();
}

void CRtspSession::Finish() {
  if (step_ == Step::Lost || step_ == Step::Closed) {
    return;  // of one that is lost, who uses it has still to say that it is not needed
  }
  step_ = Step::Closed;
  deadline_.stop();
  if (socket_) {
    socket_->disconnect(this);
    socket_->flush();  // the goodbye may not be on its way yet, and the socket goes with this
    socket_->disconnectFromHost();
  }
  Q_EMIT SignalClosed();
}

}  // namespace TarnClient
