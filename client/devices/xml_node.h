#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace TarnClient {

/// An element of a document that somebody else has sent. Names are compared with their namespace, so prefixes do not
/// matter.
struct XmlNode {
  QString space, name, text;
  std::vector<std::pair<QString, QString>> attributes;  // without a namespace
  std::vector<XmlNode> children;

  /// The first child of this name, in any namespace that begins with `space_start`; an empty element when there is
  /// none.
  const XmlNode& Child(const char* space_start, const char* child_name) const;
  std::vector<const XmlNode*> Children(const char* space_start, const char* child_name) const;
  /// Empty when there is none.
  QString Attribute(const char* attribute_name) const;
  bool IsNull() const { return name.isEmpty(); }
};

/// The root of a document. Empty when it is no XML, when it is larger or deeper than any sane answer, and when it
/// declares types or entities.
std::optional<XmlNode> ReadXml(const QByteArray& bytes);

constexpr int kLargestXml = 2 * 1024 * 1024;

}  // namespace TarnClient
