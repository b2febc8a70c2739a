#include "pictures/reconnect_pause.h"

#include <algorithm>

namespace TarnClient {

namespace {

constexpr int kPauses[] = {1, 2, 4, 8, 15};
constexpr int kLast = 5;
constexpr double kJitter = 0.25;

// A camera locks who tries a wrong password too often.
bool NeedsHelp(PictureLoss loss) {
  switch (loss) {
    case PictureLoss::NoAddress:
    case PictureLoss::BadAddress:
    case PictureLoss::WrongPassword:
    case PictureLoss::UnknownDigest:
    case PictureLoss::UnknownCodec:
    case PictureLoss::NeedsStore:
    case PictureLoss::Removed:
      return true;
    case PictureLoss::None:
    case PictureLoss::NoSuchStream:  // a camera that starts has none at first
    case PictureLoss::Certificate:
    case PictureLoss::NotReachable:
    case PictureLoss::NoAnswer:
    case PictureLoss::Ended:
    case PictureLoss::Refused:
      break;
  }
  return false;
}

}  // namespace

qint64 ReconnectPause(int failed, PictureLoss loss, double chance, qint64 unit_ms) {
  int step = std::clamp(failed, 1, kLast);
  if (NeedsHelp(loss)) {
    step = kLast;
  }
  const double around = 1 + kJitter * (2 * chance - 1);
  return static_cast<qint64>(kPauses[step - 1] * around * static_cast<double>(unit_ms));
}

}  // namespace TarnClient
