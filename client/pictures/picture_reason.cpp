#include "pictures/picture_reason.h"

namespace TarnClient {

namespace {

const char* WordsFor(PictureLoss loss) {
  switch (loss) {
    case PictureLoss::NoAddress:
      return "no address";
    case PictureLoss::BadAddress:
      return "bad address";
    case PictureLoss::NotReachable:
      return "not reachable";
    case PictureLoss::NoAnswer:
      return "no answer";
    case PictureLoss::WrongPassword:
      return "wrong password";
    case PictureLoss::UnknownDigest:
      return "unknown digest";
    case PictureLoss::NoSuchStream:
      return "no such stream";
    case PictureLoss::UnknownCodec:
      return "unknown codec";
    case PictureLoss::Certificate:
      return "certificate";
    case PictureLoss::Refused:
      return "refused";
    case PictureLoss::Ended:
      return "ended";
    case PictureLoss::NeedsStore:
      return "needs store";
    case PictureLoss::Removed:
      return "removed";
    case PictureLoss::None:
      break;
  }
  return "";
}

const char* WordsFor(const PictureStatus& status) {
  switch (status.state) {
    case PictureState::Live:
      return "";
    case PictureState::Stopped:
      return "stopped";
    case PictureState::Opening:
      return "connecting";
    case PictureState::Late:
      return "late";
    case PictureState::Offline:
      return "offline";
    case PictureState::Lost:
      break;
  }
  return WordsFor(status.loss);
}

}  // namespace

QString ReasonOf(const PictureStatus& status) {
  return QString::fromLatin1(WordsFor(status));
}

}  // namespace TarnClient
