#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plan_rules/families.h"

namespace TarnHost::Store {

using view_plugin_protocol::FamilyOfRoot;
using view_plugin_protocol::IsRootCode;
using view_plugin_protocol::OwnFamily;
using view_plugin_protocol::OwnRoot;
using view_plugin_protocol::PublicFamily;
using view_plugin_protocol::PublicRoot;
using view_plugin_protocol::ReceivedFamily;
using view_plugin_protocol::ReceivedRoot;

/// A group as the tree shows it.
struct GroupRow {
  int32_t code = 0;
  int32_t parent = PublicRoot;
  int32_t family = PublicFamily;
  int32_t owner = 0;  // user of an own group; 0 otherwise
  std::string name;
};

/// A plan as the tree, the search and the automatic start need it.
struct PlanRow {
  int32_t code = 0;
  int32_t parent = PublicRoot;
  int32_t family = PublicFamily;
  int32_t owner = 0;
  std::string name, folded_name;  // folded for searching
  int32_t split_type = 1, page_count = 1;
  bool auto_run = false;
  int32_t begin_second = -1, end_second = -1;  // of the day; -1 when there is none
  std::vector<uint32_t> cameras = {};          // that its windows show, by their numbers in the store
  int64_t revision = 1;                        // of all that is stored of it
};

/// Numbers of cameras as the text that is stored, and back; what is no number is left out.
std::string NumbersToText(const std::vector<uint32_t>& numbers);
std::vector<uint32_t> NumbersFromText(const std::string& text);

/// The code that `text` writes in plain decimal form; 0, which is no code, for anything else.
int32_t ParseCode(const std::string& text);
/// The other way round, into a text that is there already: for lists of many.
void SetCode(std::string* text, int32_t code);

}  // namespace TarnHost::Store
