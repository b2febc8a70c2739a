#pragma once

#include <map>
#include <set>
#include <utility>
#include <vector>

#include "moving/import_report.h"

namespace TarnHost::Moving {

/// Which codes of a file are which in the store; 0, the top, is itself.
using Codes = std::map<int32_t, int32_t>;

/// Null for what did not come along.
inline const int32_t* Find(const Codes& codes, int32_t code) {
  const auto found = codes.find(code);
  if (found == codes.end()) {
    return nullptr;
  }
  return &found->second;
}

/// Which numbers of one kind are given out. Thread: any.
class CGivenNumbers {
 public:
  /// `keeps`: whether what comes is of the same site.
  CGivenNumbers(int32_t last, bool keeps) : last_(last), keeps_(keeps) {}

  void Note(int32_t code);
  template <class Record>
  void Note(const std::vector<Record>& records) {
    for (const Record& record : records) {
      Note(record.code);
    }
  }
  /// The number of what comes with `code`: the same where that is free in its own site, else the next. Throws
  /// CStoreError when there is none left.
  int32_t New(int32_t code);
  /// That of what is there already, else a new one.
  template <class Record>
  int32_t Of(const Record* known, int32_t code) {
    if (known) {
      return known->code;
    }
    return New(code);
  }
  int32_t Last() const { return last_; }

 private:
  std::set<int32_t> used_;
  int32_t last_;
  const bool keeps_;
};

/// How many of these stand from `code` up to the top, both counted, by their parents.
int LevelOf(const std::map<int32_t, int32_t>& parents, int32_t code);

/// Leaves out what has a code that was there before; `seen` has the codes.
template <class Record>
void DropDoubles(const char* kind, std::set<int32_t>* seen, std::vector<Record>* records, CImportReport* report) {
  std::vector<Record> once;
  for (Record& record : *records) {
    if (seen->insert(record.code).second) {
      once.push_back(std::move(record));
    } else {
      report->LeaveOut(kind, record, QStringLiteral("its code stands twice in the file"));
    }
  }
  *records = std::move(once);
}

/// The records with their parents before them; what hangs on nothing is left out.
template <class Record>
std::vector<Record> TopDown(const char* kind, std::vector<Record> records, CImportReport* report) {
  std::map<int32_t, std::vector<size_t>> below;
  for (size_t place = 0; place < records.size(); ++place) {
    below[records[place].parent].push_back(place);
  }
  std::vector<Record> ordered;
  std::vector<int32_t> parents = {0};
  for (size_t next = 0; next < parents.size(); ++next) {
    for (const size_t place : std::exchange(below[parents[next]], {})) {
      parents.push_back(records[place].code);
      ordered.push_back(std::move(records[place]));
    }
  }
  for (const auto& [parent, places] : below) {
    for (const size_t place : places) {
      report->LeaveOut(kind, records[place], QLatin1String(kNoParent));
    }
  }
  return ordered;
}

}  // namespace TarnHost::Moving
