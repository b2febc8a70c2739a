#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

#include "host_export.h"

namespace MarUIControl {

/// What some keys do, as a list of keys names it. Texts are in the user's language.
struct KeyEntry {
  QString group;             ///< Where the keys are taken: "Plans", "Live view", ...
  QList<QKeySequence> keys;  ///< Any of them does it.
  QString text;              ///< What they do.
};

/// As the platform writes them, in the user's language; several with a comma between them. Thread: GUI.
TARN_HOST_EXPORT QString TextOfKeys(const QList<QKeySequence>& keys);

/// A tool tip: "Save (Ctrl+S)", and in a line below why that cannot be done now. Markup is shown as it is.
/// Without keys, or without a reason, that part is left out. Thread: GUI.
TARN_HOST_EXPORT QString TipWithKeys(const QString& text, const QList<QKeySequence>& keys,
                                     const QString& why_not = QString());

}  // namespace MarUIControl
