#pragma once

#include <string>

#include "marlog/marlog.h"

namespace TarnPlanView {

/// "A::B::C" of a compiler's "void A::B::C(int)": what the client's log shows as the origin of a line.
inline std::string QualifiedFunctionName(const std::string& pretty) {
  const std::string head = pretty.substr(0, pretty.find('('));
  const auto blank = head.rfind(' ');
  return blank == std::string::npos ? head : head.substr(blank + 1);
}

}  // namespace TarnPlanView

// Lines of the plug-in in the client's log. `text` is a literal without conversions.
#define TARN_PLAN_LOG_INFO(text)                                        \
  ::marlog::Write("LyraClientInfo", ::marlog::Info, "[%s(%d)] - " text, \
                  ::TarnPlanView::QualifiedFunctionName(__PRETTY_FUNCTION__).c_str(), __LINE__)
#define TARN_PLAN_LOG_ERROR(code, text)                                                         \
  ::marlog::Write("LyraClientError", ::marlog::Error, "[%s(%d)] [0x%08x] - %s",                 \
                  ::TarnPlanView::QualifiedFunctionName(__PRETTY_FUNCTION__).c_str(), __LINE__, \
                  static_cast<unsigned>(code), text)
