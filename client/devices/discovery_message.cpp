#include "devices/discovery_message.h"

#include <QXmlStreamWriter>
#include <algorithm>

#include "devices/device_answers.h"
#include "devices/soap_message.h"

namespace TarnClient {

namespace {

// The search speaks an older dialect than the services do.
constexpr char kDiscovery[] = "http://schemas.xmlsoap.org/ws/2005/04/discovery";
constexpr char kAddressing[] = "http://schemas.xmlsoap.org/ws/2004/08/addressing";
constexpr char kNetwork[] = "http://www.onvif.org/ver10/network/wsdl";
constexpr size_t kMostInOneAnswer = 64;

QStringList Words(const QString& text) {
  return text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// Of the addresses that a device names the one that its answer came from, else the first.
QUrl ServiceOf(const XmlNode& match, const QHostAddress& sender) {
  QUrl first;
  for (const QString& word : Words(match.Child(kDiscovery, "XAddrs").text)) {
    const QUrl url = DeviceAddress(word);
    if (QHostAddress(url.host()).isEqual(sender, QHostAddress::TolerantConversion)) {
      return url;
    }
    if (first.isEmpty()) {
      first = url;
    }
  }
  return first;
}

bool Answers(const XmlNode& header, const QStringList& questions) {
  return questions.contains(header.Child(kAddressing, "RelatesTo").text);
}

}  // namespace

QByteArray ProbeMessage(const QString& id) {
  QByteArray bytes;
  QXmlStreamWriter xml(&bytes);
  xml.writeStartDocument();
  xml.writeNamespace(FromAscii(Onvif::kSoap), QStringLiteral("s"));
  xml.writeNamespace(FromAscii(kAddressing), QStringLiteral("a"));
  xml.writeNamespace(FromAscii(kDiscovery), QStringLiteral("d"));
  xml.writeNamespace(FromAscii(kNetwork), QStringLiteral("dn"));  // the types below are names with this prefix
  xml.writeStartElement(FromAscii(Onvif::kSoap), QStringLiteral("Envelope"));
  xml.writeStartElement(FromAscii(Onvif::kSoap), QStringLiteral("Header"));
  xml.writeTextElement(FromAscii(kAddressing), QStringLiteral("Action"),
                       FromAscii(kDiscovery) + QStringLiteral("/Probe"));
  xml.writeTextElement(FromAscii(kAddressing), QStringLiteral("MessageID"), id);
  xml.writeTextElement(FromAscii(kAddressing), QStringLiteral("To"),
                       QStringLiteral("urn:schemas-xmlsoap-org:ws:2005:04:discovery"));
  xml.writeEndElement();
  xml.writeStartElement(FromAscii(Onvif::kSoap), QStringLiteral("Body"));
  xml.writeStartElement(FromAscii(kDiscovery), QStringLiteral("Probe"));
  xml.writeTextElement(FromAscii(kDiscovery), QStringLiteral("Types"), QStringLiteral("dn:NetworkVideoTransmitter"));
  xml.writeEndDocument();
  return bytes;
}

std::vector<DeviceFound> ReadProbeMatches(const QByteArray& bytes, const QStringList& questions,
                                          const QHostAddress& sender) {
  std::vector<DeviceFound> devices;
  const std::optional<XmlNode> root = ReadXml(bytes);
  if (!root || !Answers(root->Child(Onvif::kSoap, "Header"), questions)) {
    return devices;
  }
  const XmlNode& matches = root->Child(Onvif::kSoap, "Body").Child(kDiscovery, "ProbeMatches");
  for (const XmlNode* match : matches.Children(kDiscovery, "ProbeMatch")) {
    const QStringList scopes = Words(match->Child(kDiscovery, "Scopes").text);
    DeviceFound device;
    device.service = ServiceOf(*match, sender);
    device.id = match->Child(kAddressing, "EndpointReference").Child(kAddressing, "Address").text;
    if (device.id.isEmpty()) {
      device.id = device.service.toString();
    }
    device.name = ScopeText(scopes, "name");
    device.model = ScopeText(scopes, "hardware");
    device.place = ScopeText(scopes, "location");
    if (device.service.isValid() && !device.service.isEmpty() && devices.size() < kMostInOneAnswer) {
      devices.push_back(device);
    }
  }
  return devices;
}

}  // namespace TarnClient
