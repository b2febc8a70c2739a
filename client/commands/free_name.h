#pragma once

#include <QSet>
#include <QString>

namespace TarnClient {

/// A name for a copy: "Gate" becomes "Gate (2)", or the next number that is not taken; so does a copy of "Gate (2)".
/// Longer names than plans may have are cut before the number. Case does not tell names apart.
QString NameOfCopy(const QString& name, const QSet<QString>& taken);

}  // namespace TarnClient
