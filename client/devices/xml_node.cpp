#include "devices/xml_node.h"

#include <QXmlStreamReader>
#include <algorithm>

namespace TarnClient {

namespace {

constexpr int kDeepest = 40, kMostElements = 50000;

bool IsNamed(const XmlNode& node, const char* space_start, const char* name) {
  return node.name == QLatin1String(name) && node.space.startsWith(QLatin1String(space_start));
}

XmlNode Opened(const QXmlStreamReader& reader) {
  XmlNode node{reader.namespaceUri().toString(), reader.name().toString(), {}, {}, {}};
  for (const QXmlStreamAttribute& attribute : reader.attributes()) {
    if (attribute.namespaceUri().isEmpty()) {
      node.attributes.emplace_back(attribute.name().toString(), attribute.value().toString());
    }
  }
  return node;
}

}  // namespace

const XmlNode& XmlNode::Child(const char* space_start, const char* child_name) const {
  static const XmlNode none;
  const auto found = std::find_if(children.begin(), children.end(),
                                  [&](const XmlNode& child) { return IsNamed(child, space_start, child_name); });
  return found == children.end() ? none : *found;
}

std::vector<const XmlNode*> XmlNode::Children(const char* space_start, const char* child_name) const {
  std::vector<const XmlNode*> found;
  for (const XmlNode& child : children) {
    if (IsNamed(child, space_start, child_name)) {
      found.push_back(&child);
    }
  }
  return found;
}

QString XmlNode::Attribute(const char* attribute_name) const {
  for (const auto& [key, value] : attributes) {
    if (key == QLatin1String(attribute_name)) {
      return value;
    }
  }
  return QString();
}

std::optional<XmlNode> ReadXml(const QByteArray& bytes) {
  if (bytes.size() > kLargestXml) {
    return std::nullopt;
  }
  QXmlStreamReader reader(bytes);
  std::vector<XmlNode> open(1);  // the first holds the root
  int elements = 0;
  while (!reader.atEnd()) {
    switch (reader.readNext()) {
      case QXmlStreamReader::DTD:
      case QXmlStreamReader::EntityReference:
        return std::nullopt;
      case QXmlStreamReader::StartElement:
        if (open.size() > kDeepest || ++elements > kMostElements) {
          return std::nullopt;
        }
        open.push_back(Opened(reader));
        break;
      case QXmlStreamReader::EndElement: {
        XmlNode node = std::move(open.back());
        open.pop_back();
        node.text = node.text.trimmed();
        open.back().children.push_back(std::move(node));
        break;
      }
      case QXmlStreamReader::Characters:
        open.back().text += reader.text();
        break;
      default:
        break;
    }
  }
  if (reader.hasError() || open.front().children.empty()) {
    return std::nullopt;
  }
  return std::move(open.front().children.front());
}

}  // namespace TarnClient
