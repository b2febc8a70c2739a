#pragma once

#include <QFontMetrics>
#include <QString>

namespace TarnClient {

/// Width of the widest text that differs from this one in its digits only: a label of such a width stays where it is
/// while its number goes on.
int SteadyWidth(const QFontMetrics& metrics, QString text);

}  // namespace TarnClient
