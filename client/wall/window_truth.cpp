#include "wall/window_truth.h"

#include <QCoreApplication>
#include <QLocale>
#include <tuple>

namespace TarnClient {

namespace {

using Look = WindowTruth::Look;
using Sign = WindowTruth::Sign;

// Longer than a source itself takes to notice; key frames may be further apart than that.
constexpr qint64 kFrozenMs = 5000;

struct Words {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::WindowTruth)
};

Look LookOf(const PictureStatus& status, bool has_own, bool has_any) {
  if (!has_any) {
    return Look::Bare;
  }
  switch (status.state) {
    case PictureState::Live:
      return has_own ? Look::Clear : Look::Dimmed;
    case PictureState::Stopped:
    case PictureState::Opening:
      return Look::Dimmed;
    case PictureState::Late:
    case PictureState::Lost:
    case PictureState::Offline:
      break;
  }
  return Look::Grey;
}

void SayLive(const PictureStatus& status, WindowTruth* truth) {
  QStringList spoken{Words::tr("live")};
  if (status.repeats) {
    truth->notes << Words::tr("Always the same picture");
    spoken << Words::tr("always the same picture");
  }
  if (status.key_frames_only) {
    truth->notes << Words::tr("Few pictures: computer busy");
    spoken << Words::tr("few pictures, since the computer is busy");
  }
  truth->spoken = spoken.join(QStringLiteral(", "));
}

void SayWaiting(WindowTruth* truth) {
  truth->sign = Sign::Waiting;
  truth->headline = Words::tr("Connecting...");
  truth->spoken = Words::tr("connecting");
}

void SayState(const PictureStatus& status, bool has_own, WindowTruth* truth) {
  switch (status.state) {
    case PictureState::Live:
      return has_own ? SayLive(status, truth) : SayWaiting(truth);
    case PictureState::Stopped:
    case PictureState::Opening:
      return SayWaiting(truth);
    case PictureState::Late:
      truth->sign = Sign::Late;
      truth->headline = Words::tr("No new picture");
      truth->spoken = Words::tr("no new picture");
      return;
    case PictureState::Lost:
      truth->sign = Sign::Lost;
      truth->headline = TextOf(status.loss);
      truth->spoken = Words::tr("no picture: %1").arg(truth->headline);
      return;
    case PictureState::Offline:
      truth->sign = Sign::Offline;
      truth->headline = Words::tr("Camera offline");
      truth->spoken = Words::tr("offline");
      return;
  }
}

}  // namespace

WindowTruth TruthOf(const PictureStatus& status, const QDateTime& remembered, const QDate& today) {
  const bool has_own = status.taken.isValid();
  const QDateTime taken = has_own ? status.taken : remembered;
  WindowTruth truth;
  truth.look = LookOf(status, has_own, taken.isValid());
  SayState(status, has_own, &truth);
  if (truth.look == Look::Dimmed || truth.look == Look::Grey) {
    truth.age = AgeText(taken, today);
  }
  return truth;
}

bool SaysTheSame(const PictureStatus& one, const PictureStatus& other) {
  const auto said = [](const PictureStatus& status) {
    return std::make_tuple(status.state, status.loss, status.repeats, status.key_frames_only, status.taken.isValid());
  };
  return said(one) == said(other);
}

PictureStatus WithoutFrozen(PictureStatus status, qint64 ms_without_new) {
  const bool is_frozen = ms_without_new > kFrozenMs && !status.key_frames_only;
  if (status.state == PictureState::Live && is_frozen) {
    status.state = PictureState::Late;
  }
  return status;
}

QString AgeText(const QDateTime& taken, const QDate& today) {
  const QLocale locale;
  const QString time = locale.toString(taken.time(), QStringLiteral("HH:mm:ss"));
  if (taken.date() == today) {
    return Words::tr("picture of %1").arg(time);
  }
  return Words::tr("picture of %1, %2").arg(locale.toString(taken.date(), QLocale::ShortFormat), time);
}

QString TextOf(PictureLoss loss) {
  switch (loss) {
    case PictureLoss::None:
      break;
    case PictureLoss::NoAddress:
      return Words::tr("No address entered");
    case PictureLoss::BadAddress:
      return Words::tr("Address not valid");
    case PictureLoss::NotReachable:
      return Words::tr("Not reachable");
    case PictureLoss::NoAnswer:
      return Words::tr("No answer");
    case PictureLoss::WrongPassword:
      return Words::tr("Wrong user name or password");
    case PictureLoss::UnknownDigest:
      return Words::tr("Unknown kind of log-in");
    case PictureLoss::NoSuchStream:
      return Words::tr("No such stream");
    case PictureLoss::UnknownCodec:
      return Words::tr("Unknown video format");
    case PictureLoss::Certificate:
      return Words::tr("Certificate not trusted");
    case PictureLoss::Refused:
      return Words::tr("Camera serves no more viewers");
    case PictureLoss::Ended:
      return Words::tr("Stream has ended");
    case PictureLoss::NeedsStore:
      return Words::tr("Needs the plan store for its password");
    case PictureLoss::Removed:
      return Words::tr("Removed from the site");
  }
  return Words::tr("No connection");
}

QString NameOf(PictureState state) {
  switch (state) {
    case PictureState::Live:
      return QStringLiteral("live");
    case PictureState::Opening:
      return QStringLiteral("opening");
    case PictureState::Late:
      return QStringLiteral("late");
    case PictureState::Offline:
      return QStringLiteral("offline");
    case PictureState::Stopped:
    case PictureState::Lost:
      break;
  }
  return QStringLiteral("lost");
}

}  // namespace TarnClient
