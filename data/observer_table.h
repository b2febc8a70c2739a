#pragma once

#include <memory>
#include <string>

#include "plan_rules/code_table.h"

namespace TarnPlanView {

/// Observers by the code that each watches, one a code.
template <class Observer>
class CObserverTable {
 public:
  std::shared_ptr<Observer> Find(const std::string& code) const {
    std::shared_ptr<Observer> found;
    table_.ForEach(view_plugin_protocol::NumberOfCode(code), [&](const std::shared_ptr<Observer>& observer) {
      if (observer->GetIndexCode() == code) {
        found = observer;
      }
    });
    return found;
  }
  /// Before Find() or Insert() of many.
  void Fetch(const std::string& code) const { table_.Fetch(view_plugin_protocol::NumberOfCode(code)); }
  /// For a code without one.
  void Insert(const std::shared_ptr<Observer>& observer) {
    table_.Insert(view_plugin_protocol::NumberOfCode(observer->GetIndexCode()), observer);
  }
  /// Null when there is none.
  std::shared_ptr<Observer> Take(const std::string& code) {
    return table_.Take(view_plugin_protocol::NumberOfCode(code),
                       [&code](const auto& observer) { return observer->GetIndexCode() == code; });
  }
  template <class Taker>
  void ForAll(Taker take) {
    table_.ForAll(take);
  }
  void Clear() { table_.Clear(); }

 private:
  view_plugin_protocol::CCodeTable<std::shared_ptr<Observer>> table_;
};

}  // namespace TarnPlanView
