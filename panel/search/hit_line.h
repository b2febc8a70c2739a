#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <functional>

namespace TarnPlanView {

/// Where a search hit stands, and what it shows where it was found by a camera.
struct HitLine {
  QString place, shown;
};

/// "Public plans / Gates / North".
QString PlaceText(const QStringList& groups);
/// The whole of it for tips and assistive technology, e.g. "Gates / North · shows CAM 017".
QString WholeLine(const HitLine& line);
/// What stands between the two parts.
QString HitLineGap();

/// Where `searched` stands in `text`, whatever its case, from this place on; a place for each, none within another.
QVector<int> PlacesOf(const QString& searched, const QString& text, int from);

/// What fits `width`: groups are left out between the outermost and the innermost, which stays as long as anything
/// does, and the camera keeps half of the line at least. Single names that are still too long are left to the painting.
HitLine FittedLine(const QStringList& groups, const QString& shown, int width,
                   const std::function<int(const QString&)>& width_of);

}  // namespace TarnPlanView
