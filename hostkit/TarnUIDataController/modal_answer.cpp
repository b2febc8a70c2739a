#include "TarnUIDataController/modal_answer.h"

#include <utility>

namespace TarnHost {

namespace {

std::function<int(const ModalQuestion&)>& Answer() {
  static std::function<int(const ModalQuestion&)> answer;
  return answer;
}

}  // namespace

void SetModalAnswer(std::function<int(const ModalQuestion&)> answer) {
  Answer() = std::move(answer);
}

int AskModal(const ModalQuestion& question, const std::function<int()>& show) {
  const auto answer = Answer();  // a copy: the answer may set another one
  if (!answer) {
    return show();
  }
  return answer(question);
}

}  // namespace TarnHost
