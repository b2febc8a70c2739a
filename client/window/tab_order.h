#pragma once

#include <QVector>

class QWidget;

namespace TarnClient {

/// Tab goes through these parts one after the other, and through what each holds in the order of its making.
void SetTabOrder(const QVector<QWidget*>& parts);

}  // namespace TarnClient
