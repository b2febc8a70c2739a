#pragma once

#include <QMetaType>

namespace MarUIControl {

/// The part of a row that the mouse is over. A plain value; a meta type under its full name.
class CItemDataRole {
 public:
  /// The parts of a row.
  enum Part {
    NoPart = 0,          ///< None: the mouse is elsewhere.
    TextPart = 1,        ///< Anywhere on the row but for the button.
    MoreButtonPart = 2,  ///< The button at the row's end that opens its menu.
  };

  /// No part.
  CItemDataRole() = default;
  /// Implicit, so that a part can be handed over as it is.
  CItemDataRole(Part part) : part_(part) {}  // NOLINT: a part is the role
  /// Which part it is.
  Part GetPart() const { return part_; }
  /// Whether both are the same part.
  bool operator==(const CItemDataRole& other) const { return part_ == other.part_; }
  /// Whether they are two parts.
  bool operator!=(const CItemDataRole& other) const { return part_ != other.part_; }

 private:
  Part part_ = NoPart;
};

}  // namespace MarUIControl

Q_DECLARE_METATYPE(MarUIControl::CItemDataRole)
