#include "hit_line.h"

#include <algorithm>

namespace TarnPlanView {

namespace {

const QString kEllipsis = QStringLiteral("\u2026");

using WidthOf = std::function<int(const QString&)>;

// The innermost group is what tells namesakes apart.
QString ShortestPlace(const QStringList& groups) {
  if (groups.size() < 2) {
    return PlaceText(groups);
  }
  return PlaceText({kEllipsis, groups.last()});
}

// From the whole path down to the innermost group.
QString FittedPlace(const QStringList& groups, int width, const WidthOf& width_of) {
  QString place = PlaceText(groups);
  for (int left_out = 1; width_of(place) > width && left_out < groups.size() - 1; ++left_out) {
    place = PlaceText(QStringList{groups.first(), kEllipsis} + groups.mid(left_out + 1));
  }
  if (width_of(place) > width) {
    return ShortestPlace(groups);
  }
  return place;
}

}  // namespace

QString HitLineGap() {
  return QStringLiteral(" \u00b7 ");
}

QString PlaceText(const QStringList& groups) {
  return groups.join(QStringLiteral(" / "));
}

QString WholeLine(const HitLine& line) {
  QStringList parts{line.place, line.shown};
  parts.removeAll(QString());
  return parts.join(HitLineGap());
}

QVector<int> PlacesOf(const QString& searched, const QString& text, int from) {
  QVector<int> places;
  if (searched.isEmpty()) {
    return places;
  }
  for (int at = text.indexOf(searched, from, Qt::CaseInsensitive); at >= 0;
       at = text.indexOf(searched, at + searched.size(), Qt::CaseInsensitive)) {
    places.append(at);
  }
  return places;
}

HitLine FittedLine(const QStringList& groups, const QString& shown, int width, const WidthOf& width_of) {
  if (shown.isEmpty()) {
    return {FittedPlace(groups, width, width_of), QString()};
  }
  const int for_both = width - width_of(HitLineGap());
  const int least = width_of(ShortestPlace(groups));
  const int for_place = std::max(for_both - width_of(shown), std::min(least, for_both / 2));
  return {FittedPlace(groups, for_place, width_of), shown};
}

}  // namespace TarnPlanView
