#include "store/camera_rules.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

namespace TarnHost {
namespace Store {
namespace {

constexpr int kLargestAuthority = 1024 * 1024;
const char kHostMissing[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The address names no computer.");

bool IsControl(QChar c) {
  return c.category() == QChar::Other_Control;
}

bool HasControls(const QString& text) {
  return std::any_of(text.begin(), text.end(), IsControl);
}

bool IsBlank(QChar c) {
  return c.isSpace() || IsControl(c);
}

/// The parts of an address as they are written.
struct Parts {
  QString scheme, user_info, host, port, rest;
  bool has_user = false, has_port = false;
};

// A password may have an @ in it; the host begins behind the last one.
Parts Split(const QString& text) {
  Parts parts;
  const int colon = text.indexOf(QLatin1String("://"));
  parts.scheme = text.left(std::max(colon, 0)).toLower();
  const QString behind = text.mid(colon + 3);
  int end = 0;
  while (end < behind.size() && !QStringLiteral("/?#").contains(behind[end])) {
    ++end;
  }
  parts.rest = behind.mid(end);
  QString place = behind.left(end);
  const int at = place.lastIndexOf(QLatin1Char('@'));
  parts.has_user = at >= 0;
  parts.user_info = place.left(std::max(at, 0));
  place = place.mid(at + 1);
  const int port = place.indexOf(QLatin1Char(':'), qMax(int(place.indexOf(QLatin1Char(']'))), 0));
  parts.has_port = port >= 0;
  parts.host = place.left(port);
  parts.port = place.mid(port + 1);
  return parts;
}

// Behind the host; with a user a password mostly stands, whatever it is called.
bool MayHoldPassword(const QString& text) {
  static const QRegularExpression signs(
      QStringLiteral("pass|pwd|@|(user|usr|name|login|account|auth|token|secret|key|pw|psw|\\bp)="),
      QRegularExpression::CaseInsensitiveOption);
  return signs.match(text).hasMatch();
}

CStoreText FaultOfPlace(const Parts& parts) {
  if (parts.host.isEmpty() || parts.host == QLatin1String("[]")) {
    return kHostMissing;
  }
  if (parts.host.contains(QLatin1Char('[')) != parts.host.endsWith(QLatin1Char(']'))) {
    return kHostMissing;
  }
  if (parts.rest.contains(QLatin1Char('@'))) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store",
                              "Behind the first /, ? or # of the address stands an @. A password with / ? or # in it"
                              " belongs in the field for the password; in a path write %1."),
            {QStringLiteral("%40")}};
  }
  bool is_number = false;
  const int port = parts.port.toInt(&is_number);
  const bool is_plain = is_number && QString::number(port) == parts.port;
  if (parts.has_port && (!is_plain || port < 1 || port > 65535)) {
    return QT_TRANSLATE_NOOP("TarnHost::Store",
                             "The address has no possible port behind the colon. A password with / ? or # in it belongs"
                             " in the field for the password.");
  }
  if (parts.rest.contains(QLatin1Char('#'))) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "The address must not contain #.");
  }
  return {};
}

QString Decoded(const QString& text) {
  return QString::fromUtf8(QByteArray::fromPercentEncoding(text.toUtf8()));
}

CStoreText TakeUser(const Parts& parts, CameraAddress* address) {
  const int colon = parts.user_info.indexOf(QLatin1Char(':'));
  const QString user = Decoded(parts.user_info.left(colon));
  CSecret secret;
  if (colon >= 0) {
    secret = CSecret(Decoded(parts.user_info.mid(colon + 1)).toStdString());
  }
  for (const CStoreText& fault : {FaultOfUser(user), FaultOfSecret(secret)}) {
    if (!fault.IsEmpty()) {
      return fault;
    }
  }
  address->user = user.toStdString();
  address->secret = secret;
  return {};
}

CStoreText Read(const QString& written, const QStringList& schemes, const CStoreText& wrong_scheme,
                CameraAddress* address) {
  const QString text = written.trimmed();
  *address = {};
  if (text.isEmpty()) {
    return {};
  }
  if (text.size() > kLongestCameraAddress) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "The address has more than %1 characters."),
            {QString::number(kLongestCameraAddress)}};
  }
  if (std::any_of(text.begin(), text.end(), IsBlank)) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "The address must not contain blanks.");
  }
  const Parts parts = Split(text);
  if (!schemes.contains(parts.scheme)) {
    return wrong_scheme;
  }
  CStoreText fault = FaultOfPlace(parts);
  if (fault.IsEmpty() && parts.has_user) {
    fault = TakeUser(parts, address);
  }
  if (fault.IsEmpty()) {
    QString url = parts.scheme + QStringLiteral("://") + parts.host;
    if (parts.has_port) {
      url += QLatin1Char(':') + parts.port;
    }
    address->url = (url + parts.rest).toStdString();
  }
  return fault;
}

CStoreText FaultOfText(const QString& name, int longest) {
  if (name.trimmed().isEmpty()) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "The name is empty.");
  }
  if (name.size() > longest) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "The name has more than %1 characters."), {QString::number(longest)}};
  }
  if (HasControls(name)) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "The name must not contain control characters.");
  }
  return {};
}

}  // namespace

CStoreText ReadStreamAddress(const QString& text, CameraAddress* address) {
  return Read(text, {QStringLiteral("rtsp"), QStringLiteral("rtsps")},
              QT_TRANSLATE_NOOP("TarnHost::Store", "The address does not begin with rtsp:// or rtsps://."), address);
}

CStoreText ReadDeviceAddress(const QString& text, CameraAddress* address) {
  return Read(text, {QStringLiteral("http"), QStringLiteral("https")},
              QT_TRANSLATE_NOOP("TarnHost::Store", "The device's address does not begin with http:// or https://."),
              address);
}

CStoreText FaultOfCameraName(const QString& name) {
  return FaultOfText(name, kLongestCameraName);
}

// A slash stands between regions where a place is written as one line.
CStoreText FaultOfRegionName(const QString& name) {
  if (name.contains(QLatin1Char('/'))) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "The name of a region must not contain a slash.");
  }
  return FaultOfText(name, kLongestCameraName);
}

// A password in an address is that of the user in the address; without one, a password that is known stays.
CStoreText AddSignIn(const CameraAddress& address, CameraSignIn* all) {
  if (address.user.empty()) {
    return {};
  }
  const bool is_other_user = all->user.value_or(address.user) != address.user;
  const bool is_other_secret = !address.secret.IsEmpty() && all->secret.value_or(address.secret) != address.secret;
  if (is_other_user || is_other_secret) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "The addresses name different users or passwords.");
  }
  all->user = address.user;
  if (!address.secret.IsEmpty()) {
    all->secret = address.secret;
  }
  return {};
}

CStoreText FaultOfUser(const QString& user) {
  if (user.size() > kLongestCameraUser) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "The user name has more than %1 characters."),
            {QString::number(kLongestCameraUser)}};
  }
  if (HasControls(user) || user.contains(QLatin1Char(':'))) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "The user name must not contain colons or control characters.");
  }
  return {};
}

CStoreText FaultOfSecret(const CSecret& secret) {
  const QString text = QString::fromStdString(secret.Reveal());
  if (text.size() > kLongestCameraSecret) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "The password has more than %1 characters."),
            {QString::number(kLongestCameraSecret)}};
  }
  if (HasControls(text) || text.contains(QChar::ReplacementCharacter)) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "The password must not contain control characters.");
  }
  return {};
}

CStoreText FaultOfAuthority(const QString& pem) {
  const int begin = pem.indexOf(QLatin1String("-----BEGIN CERTIFICATE-----"));
  const int end = pem.indexOf(QLatin1String("-----END CERTIFICATE-----"));
  if (pem.contains(QLatin1String("PRIVATE KEY-----"))) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "The file holds a private key, which belongs to no desk.");
  }
  if (!pem.isEmpty() && (pem.size() > kLargestAuthority || begin < 0 || end < begin || pem.contains(QChar::Null))) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "The file holds no certificate in PEM form.");
  }
  return {};
}

}  // namespace Store

bool ReadCameraAddress(const QString& text, CameraAddress* address, QString* why) {
  *why = Store::ReadStreamAddress(text, address).Shown();
  return why->isEmpty();
}

bool ReadDeviceAddress(const QString& text, CameraAddress* address, QString* why) {
  *why = Store::ReadDeviceAddress(text, address).Shown();
  return why->isEmpty();
}

bool AddSignIn(const CameraAddress& address, CameraSignIn* all, QString* why) {
  *why = Store::AddSignIn(address, all).Shown();
  return why->isEmpty();
}

CameraSignIn JoinSignIn(const CameraSignIn& apart, const CameraSignIn& in_addresses) {
  if (apart.user && apart.user != in_addresses.user) {
    return apart;
  }
  return {in_addresses.user, apart.secret ? apart.secret : in_addresses.secret};
}

bool MayHoldPassword(const std::string& url) {
  return Store::MayHoldPassword(Store::Split(QString::fromStdString(url)).rest);
}

QString ShownCameraAddress(const std::string& url) {
  const Store::Parts parts = Store::Split(QString::fromStdString(url));
  if (parts.scheme.isEmpty()) {
    return QString();
  }
  QString shown = parts.scheme + QStringLiteral("://") + parts.host;
  if (parts.has_port) {
    shown += QLatin1Char(':') + parts.port;
  }
  const QString path = parts.rest.section(QLatin1Char('?'), 0, 0);
  if (!Store::MayHoldPassword(path)) {
    shown += path;
  }
  return shown;
}

QString WhyNoCameraName(const QString& name) {
  return Store::FaultOfCameraName(name).Shown();
}

QString WhyNoRegionName(const QString& name) {
  return Store::FaultOfRegionName(name).Shown();
}

QString WhyNoCameraUser(const QString& user) {
  return Store::FaultOfUser(user).Shown();
}

QString WhyNoCameraSecret(const CSecret& secret) {
  return Store::FaultOfSecret(secret).Shown();
}

QString WhyNoAuthority(const QString& pem) {
  return Store::FaultOfAuthority(pem).Shown();
}

}  // namespace TarnHost
