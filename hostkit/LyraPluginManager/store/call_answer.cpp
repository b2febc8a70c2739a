#include "store/call_answer.h"

namespace TarnHost::Store {

void FillRefusal(view_plugin_protocol::ResponseHeader* response, const CStoreError& refusal) {
  FillRefusal(&response->error_info, refusal);
  response->error_arguments.clear();
  response->error_kind = ErrorKindOf(refusal.GetKind());
  for (const QString& argument : refusal.Text().ShownArguments()) {
    response->error_arguments.push_back(argument.toStdString());
  }
}

void FillRefusal(std::string* error_info, const CStoreError& refusal) {
  *error_info = refusal.Text().Shown().toStdString();
}

CStoreError Unforeseen(const std::exception& error) {
  return {CStoreError::kFailed,
          {QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store failed: %1"), {QString::fromUtf8(error.what())}}};
}

}  // namespace TarnHost::Store
