#pragma once

#include <QMetaType>

namespace MarUIControl {

/// The part of a row that the mouse is over.
class CItemDataRole {
 public:
  enum Part { NoPart = 0, TextPart = 1, MoreButtonPart = 2 };

  CItemDataRole() = default;
  CItemDataRole(Part part) : part_(part) {}  // NOLINT: a part is the role
  Part GetPart() const { return part_; }
  bool operator==(const CItemDataRole& other) const { return part_ == other.part_; }
  bool operator!=(const CItemDataRole& other) const { return part_ != other.part_; }

 private:
  Part part_ = NoPart;
};

}  // namespace MarUIControl

Q_DECLARE_METATYPE(MarUIControl::CItemDataRole)
