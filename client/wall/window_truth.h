#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include "pictures/picture_status.h"

namespace TarnClient {

/// What a window says of its camera, in words and signs that need no colour.
struct WindowTruth {
  /// Bare: there is no picture. Dimmed: an older one, until the first one comes. Grey: the last one, and no other
  /// comes.
  enum class Look { Bare, Clear, Dimmed, Grey };
  enum class Sign { None, Waiting, Late, Lost, Offline };

  Look look = Look::Bare;
  Sign sign = Sign::None;
  QString headline;   // beside the sign; empty for none
  QString age;        // when the picture was taken; empty where it is live or there is none
  QStringList notes;  // what is wrong with live pictures
  QString spoken;     // for assistive technology: changes only with the state, not with the time
};

/// `remembered`: when an older picture was taken that can stand in for one that is still to come; invalid for none.
WindowTruth TruthOf(const PictureStatus& status, const QDateTime& remembered, const QDate& today);

/// Whether a window says the same of both, whatever the time.
bool SaysTheSame(const PictureStatus& one, const PictureStatus& other);

/// The status, but late for pictures that are said to be live and have not changed for so long.
PictureStatus WithoutFrozen(PictureStatus status, qint64 ms_without_new);

/// "picture of 14:03:07", with the date where that is not today's.
QString AgeText(const QDateTime& taken, const QDate& today);

/// Why there are no new pictures, in words.
QString TextOf(PictureLoss loss);

/// "live", "opening", "late", "lost" or "offline", for reports.
QString NameOf(PictureState state);

}  // namespace TarnClient
