#include "change_journal.h"

namespace TarnPlanView {

namespace {

void AddCode(std::unordered_set<std::string>& codes, const std::string& code) {
  if (!code.empty()) {
    codes.insert(code);
  }
}

}  // namespace

RecentChanges CChangeJournal::Since(int moment) const {
  RecentChanges changes;
  const int asked = count_ - moment;
  if (asked > static_cast<int>(last_.size())) {
    changes.everything = true;
    return changes;
  }
  for (auto change = last_.cend() - asked; change != last_.cend(); ++change) {
    changes.everything |= change->everything;
    AddCode(changes.plans, change->plan);
    AddCode(changes.groups, change->group);
    AddCode(changes.parents, change->parent);
  }
  return changes;
}

void CChangeJournal::NotePlan(const std::string& code, const std::string& parent) {
  note({false, code, {}, parent});
}

void CChangeJournal::NoteGroup(const std::string& code, const std::string& parent) {
  note({false, {}, code, parent});
}

void CChangeJournal::NoteChildrenOf(const std::string& parent) {
  note({false, {}, {}, parent});
}

void CChangeJournal::NoteEverything() {
  note({true, {}, {}, {}});
}

void CChangeJournal::note(const Change& change) {
  ++count_;
  last_.push_back(change);
  if (last_.size() > kKept) {
    last_.pop_front();
  }
}

}  // namespace TarnPlanView
