#include "store/store_error.h"

#include "store/store_texts.h"

namespace TarnHost::Store {

CStoreError CStoreError::NotAnswering(Kind kind) {
  CStoreError error(kind, kNoAnswer);
  error.MarkSilence();
  return error;
}

QString CStoreError::LogText() const {
  const QString text = text_.Logged();
  return words_.isEmpty() ? text : text + " (" + words_ + ')';
}

view_plugin_protocol::ErrorKind ErrorKindOf(CStoreError::Kind kind) {
  switch (kind) {
    case CStoreError::kGone:
      return view_plugin_protocol::Gone;
    case CStoreError::kChanged:
      return view_plugin_protocol::Changed;
    case CStoreError::kNotPermitted:
      return view_plugin_protocol::NotPermitted;
    case CStoreError::kRefused:
      return view_plugin_protocol::Refused;
    case CStoreError::kTooLarge:
      return view_plugin_protocol::TooLarge;
    case CStoreError::kBusy:
    case CStoreError::kConnectionLost:
    case CStoreError::kNotAnswering:
    case CStoreError::kClosed:
      return view_plugin_protocol::Unavailable;
    case CStoreError::kReadOnly:
    case CStoreError::kNoRight:
    case CStoreError::kDamaged:
    case CStoreError::kNoRoom:
    case CStoreError::kOutcomeUnknown:
    case CStoreError::kFailed:
      break;
  }
  return view_plugin_protocol::UnknownFailure;
}

}  // namespace TarnHost::Store
