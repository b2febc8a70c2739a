#pragma once

#include <QColor>
#include <QHash>
#include <QPalette>
#include <QString>

namespace tarn_ui_data_controller {

/// A skin as it stands in the resources: named colours, and the style sheet made of them. Thread: any.
class Skin {
 public:
  /// The skin of this name; an invalid one when there is none.
  static Skin Read(const QString& name);

  bool IsValid() const { return !colors_.isEmpty(); }
  QColor Color(const QString& name) const { return colors_.value(name); }
  QPalette Palette() const;
  /// The style sheet common to all skins, with every "@name" replaced by that colour.
  QString StyleSheet() const;

 private:
  QHash<QString, QColor> colors_;
};

}  // namespace tarn_ui_data_controller
