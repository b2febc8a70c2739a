#include "devices/device_session.h"

#include <QNetworkReply>
#include <QRandomGenerator>
#include <QSslConfiguration>
#include <QTimer>

#include "devices/login_answer.h"

namespace TarnClient {

namespace {

constexpr int kNonceWords = 4;
constexpr int kUnauthorized = 401, kForbidden = 403;

QByteArray NewNonce() {
  quint32 words[kNonceWords];
  QRandomGenerator::system()->fillRange(words);
  return QByteArray(reinterpret_cast<const char*>(words), sizeof words);
}

int StatusOf(const QNetworkReply& reply) {
  return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

DeviceFailure FailureOf(const QNetworkReply& reply) {
  if (reply.error() == QNetworkReply::SslHandshakeFailedError) {
    return DeviceFailure::Certificate;
  }
  const int status = StatusOf(reply);
  if (status == kUnauthorized || status == kForbidden) {
    return DeviceFailure::WrongPassword;
  }
  return status == 0 ? DeviceFailure::NoAnswer : DeviceFailure::NotUnderstood;
}

/// An error of HTTP comes with a fault in its body, as a rule; the fault says more.
DeviceCallResult ResultOf(QNetworkReply& reply) {
  // One that was cut off cannot be read any more.
  const SoapAnswer answer = reply.isReadable() ? ReadSoap(reply.read(kLargestXml + 1)) : SoapAnswer();
  switch (answer.kind) {
    case SoapAnswer::Kind::Refusal:
      return {DeviceFailure::WrongPassword, answer.fault, {}};
    case SoapAnswer::Kind::Fault:
      return {DeviceFailure::Refused, answer.fault, {}};
    case SoapAnswer::Kind::Body:
      if (reply.error() == QNetworkReply::NoError) {
        return {std::nullopt, {}, answer.body};
      }
      break;
    case SoapAnswer::Kind::NoSoap:
      break;
  }
  return {FailureOf(reply), {}, {}};
}

}  // namespace

CDeviceSession::CDeviceSession(QString user, QString password, QObject* parent)
    : QObject(parent), user_(std::move(user)), password_(std::move(password)) {
  network_.setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
}

void CDeviceSession::SetAuthority(const QByteArray& pem) {
  authority_ = pem;
}

void CDeviceSession::SetDeviceTime(const QDateTime& device_time) {
  clock_offset_ms_ = QDateTime::currentDateTimeUtc().msecsTo(device_time);
}

std::optional<UserToken> CDeviceSession::Token() const {
  if (user_.isEmpty()) {
    return std::nullopt;
  }
  return UserToken{user_, password_, QDateTime::currentDateTimeUtc().addMSecs(clock_offset_ms_), NewNonce()};
}

void CDeviceSession::Call(const QUrl& service, const SoapBody& body, const Then& then) {
  Send({service, SoapMessage(Token(), body), then});
}

void CDeviceSession::CallAsNoOne(const QUrl& service, const SoapBody& body, const Then& then) {
  Send({service, SoapMessage(std::nullopt, body), then});
}

void CDeviceSession::Send(const Request& request, const QByteArray& login) {
  QNetworkRequest http(request.service);
  http.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/soap+xml; charset=utf-8"));
  http.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
  if (!login.isEmpty()) {
    http.setRawHeader("Authorization", login);
  }
  if (!authority_.isEmpty()) {
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setCaCertificates(QSslCertificate::fromData(authority_));
    http.setSslConfiguration(tls);
  }
  QNetworkReply* reply = network_.post(http, request.message);
  reply->setParent(this);
  auto* deadline = new QTimer(reply);
  connect(deadline, &QTimer::timeout, reply, &QNetworkReply::abort);
  deadline->start(patience_ms_);
  connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received, qint64) {
    if (received > kLargestXml) {
      reply->abort();
    }
  });
  connect(reply, &QNetworkReply::finished, this, [=] { OnFinished(reply, request, !login.isEmpty()); });
}

void CDeviceSession::OnFinished(QNetworkReply* reply, const Request& request, bool has_logged_in) {
  reply->deleteLater();
  if (StatusOf(*reply) == kUnauthorized && !has_logged_in && !user_.isEmpty()) {
    const QByteArray path =
        request.service.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment);
    const bool is_encrypted = request.service.scheme() == QLatin1String("https");
    const QByteArray login = LoginAnswer(reply->rawHeader("WWW-Authenticate"),
                                         {user_, password_, "POST", path, NewNonce().toHex(), is_encrypted});
    if (!login.isEmpty()) {
      Send(request, login);
      return;
    }
  }
  request.then(ResultOf(*reply));
}

}  // namespace TarnClient
