#pragma once

#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "store/store_error.h"

namespace TarnHost::Store {

/// What a response says of a call that was refused: kind, and text and arguments in the user's language.
void FillRefusal(view_plugin_protocol::ResponseHeader* response, const CStoreError& refusal);
void FillRefusal(std::string* error_info, const CStoreError& refusal);
/// What is no CStoreError: a fault of the program or of its libraries.
CStoreError Unforeseen(const std::exception& error);

/// Runs a call's work; what it throws becomes what `answer`, a response or an error text, says of it. Thread: any.
template <class Answer, class Work>
bool AnswerCall(Answer* answer, const Work& work) {
  try {
    work();
    return true;
  } catch (const CStoreError& refusal) {
    FillRefusal(answer, refusal);
  } catch (const std::exception& error) {
    FillRefusal(answer, Unforeseen(error));
  }
  return false;
}

}  // namespace TarnHost::Store
