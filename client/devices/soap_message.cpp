#include "devices/soap_message.h"

#include <QCryptographicHash>
#include <QXmlStreamWriter>

namespace TarnClient {

namespace {

constexpr char kSecurity[] = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-secext-1.0.xsd";
constexpr char kUtility[] = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-utility-1.0.xsd";
constexpr char kDigestType[] =
    "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-username-token-profile-1.0#PasswordDigest";
constexpr char kBase64Type[] =
    "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-soap-message-security-1.0#Base64Binary";
constexpr int kLongestFault = 200;

QString CreatedText(const UserToken& token) {
  return token.created.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ"));
}

void WriteToken(QXmlStreamWriter& xml, const UserToken& token) {
  xml.writeStartElement(FromAscii(kSecurity), QStringLiteral("Security"));
  xml.writeAttribute(FromAscii(Onvif::kSoap), QStringLiteral("mustUnderstand"), QStringLiteral("1"));
  xml.writeStartElement(FromAscii(kSecurity), QStringLiteral("UsernameToken"));
  xml.writeTextElement(FromAscii(kSecurity), QStringLiteral("Username"), token.user);
  xml.writeStartElement(FromAscii(kSecurity), QStringLiteral("Password"));
  xml.writeAttribute(QStringLiteral("Type"), FromAscii(kDigestType));
  xml.writeCharacters(QString::fromLatin1(token.Digest().toBase64()));
  xml.writeEndElement();
  xml.writeStartElement(FromAscii(kSecurity), QStringLiteral("Nonce"));
  xml.writeAttribute(QStringLiteral("EncodingType"), FromAscii(kBase64Type));
  xml.writeCharacters(QString::fromLatin1(token.nonce.toBase64()));
  xml.writeEndElement();
  xml.writeTextElement(FromAscii(kUtility), QStringLiteral("Created"), CreatedText(token));
  xml.writeEndElement();
  xml.writeEndElement();
}

/// Whether one of a fault's codes, which stand in each other, has this name.
bool HasCode(const XmlNode& code, const char* name) {
  if (code.IsNull()) {
    return false;
  }
  const QString value = code.Child(Onvif::kSoap, "Value").text;
  return value.section(QLatin1Char(':'), -1) == QLatin1String(name) ||
         HasCode(code.Child(Onvif::kSoap, "Subcode"), name);
}

SoapAnswer ReadFault(const XmlNode& fault) {
  const XmlNode& code = fault.Child(Onvif::kSoap, "Code");
  const bool is_refusal = HasCode(code, "NotAuthorized") || HasCode(code, "FailedAuthentication") ||
                          HasCode(code, "InvalidSecurity") || HasCode(code, "FailedCheck");
  SoapAnswer answer;
  answer.kind = is_refusal ? SoapAnswer::Kind::Refusal : SoapAnswer::Kind::Fault;
  answer.fault = fault.Child(Onvif::kSoap, "Reason").Child(Onvif::kSoap, "Text").text.simplified().left(kLongestFault);
  return answer;
}

}  // namespace

QByteArray UserToken::Digest() const {
  return QCryptographicHash::hash(nonce + CreatedText(*this).toUtf8() + password.toUtf8(), QCryptographicHash::Sha1);
}

QByteArray SoapMessage(const std::optional<UserToken>& token, const SoapBody& body) {
  QByteArray bytes;
  QXmlStreamWriter xml(&bytes);
  xml.writeStartDocument();
  xml.writeNamespace(FromAscii(Onvif::kSoap), QStringLiteral("s"));
  xml.writeStartElement(FromAscii(Onvif::kSoap), QStringLiteral("Envelope"));
  if (token) {
    xml.writeStartElement(FromAscii(Onvif::kSoap), QStringLiteral("Header"));
    WriteToken(xml, *token);
    xml.writeEndElement();
  }
  xml.writeStartElement(FromAscii(Onvif::kSoap), QStringLiteral("Body"));
  body(xml);
  xml.writeEndElement();
  xml.writeEndElement();
  xml.writeEndDocument();
  return bytes;
}

SoapBody SimpleBody(const char* space, const char* name, const std::vector<std::pair<const char*, QString>>& texts) {
  return [space, name, texts](QXmlStreamWriter& xml) {
    xml.writeStartElement(FromAscii(space), FromAscii(name));
    for (const auto& [key, value] : texts) {
      xml.writeTextElement(FromAscii(space), FromAscii(key), value);
    }
    xml.writeEndElement();
  };
}

SoapAnswer ReadSoap(const QByteArray& bytes) {
  const std::optional<XmlNode> root = ReadXml(bytes);
  if (!root || root->name != QLatin1String("Envelope") || root->space != QLatin1String(Onvif::kSoap)) {
    return {};
  }
  const XmlNode& body = root->Child(Onvif::kSoap, "Body");
  if (body.children.empty()) {
    return {};
  }
  const XmlNode& first = body.children.front();
  if (first.name == QLatin1String("Fault") && first.space == QLatin1String(Onvif::kSoap)) {
    return ReadFault(first);
  }
  SoapAnswer answer;
  answer.kind = SoapAnswer::Kind::Body;
  answer.body = first;
  return answer;
}

}  // namespace TarnClient
