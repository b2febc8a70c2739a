#pragma once

#include <QString>
#include <QStringList>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnHost::Store {

/// Names of the configuration switches, in the order of the configuration record.
QStringList FeatureSwitchNames();

/// Sets one switch of the record by its name; false for an unknown name.
bool SetFeatureSwitch(view_plugin_protocol::GetPlanConfigResponse* config, const QString& name, int value);

/// Value of one switch of the record; 0 for an unknown name.
int FeatureSwitch(const view_plugin_protocol::GetPlanConfigResponse& config, const QString& name);

}  // namespace TarnHost::Store
