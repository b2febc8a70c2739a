#pragma once

#include <QJsonArray>
#include <memory>

#include "TarnHost/plan_store.h"

/// The plug-in's tree of public plans over an open store that stays: its rows, each with code, name, parent and count
/// of pages. Thread: the GUI thread.
class CPluginRows {
 public:
  explicit CPluginRows(std::shared_ptr<TarnHost::CPlanStore> store);
  ~CPluginRows();
  CPluginRows(const CPluginRows&) = delete;
  CPluginRows& operator=(const CPluginRows&) = delete;

  static QJsonArray Tree();
};
