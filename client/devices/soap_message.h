#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <functional>
#include <optional>

#include "devices/xml_node.h"

class QXmlStreamWriter;

namespace TarnClient {

namespace Onvif {
constexpr char kDevice[] = "http://www.onvif.org/ver10/device/wsdl";
constexpr char kMedia1[] = "http://www.onvif.org/ver10/media/wsdl";
constexpr char kMedia2[] = "http://www.onvif.org/ver20/media/wsdl";
constexpr char kPtz[] = "http://www.onvif.org/ver20/ptz/wsdl";
constexpr char kSchema[] = "http://www.onvif.org/ver10/schema";
constexpr char kSoap[] = "http://www.w3.org/2003/05/soap-envelope";
}  // namespace Onvif

/// Names and addresses of the services are plain ASCII.
inline QString FromAscii(const char* text) {
  return QString::fromLatin1(text);
}

/// Proves to a device that the sender knows the password, without sending it. It is of no use to anyone else later: it
/// holds for a moment of the device's clock and once.
struct UserToken {
  QString user;
  QString password;
  QDateTime created;  // by the device's clock
  QByteArray nonce;

  QByteArray Digest() const;
};

/// Writes what stands in the body.
using SoapBody = std::function<void(QXmlStreamWriter&)>;

QByteArray SoapMessage(const std::optional<UserToken>& token, const SoapBody& body);

/// A body that is one element with these texts in it.
SoapBody SimpleBody(const char* space, const char* name,
                    const std::vector<std::pair<const char*, QString>>& texts = {});

struct SoapAnswer {
  enum class Kind { NoSoap, Fault, Refusal, Body };  // a refusal is a fault that another password could mend
  Kind kind = Kind::NoSoap;
  XmlNode body;   // its first element
  QString fault;  // the device's own words
};

SoapAnswer ReadSoap(const QByteArray& bytes);

}  // namespace TarnClient
