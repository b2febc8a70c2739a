#pragma once

#include <QtGlobal>

#include "pictures/picture_status.h"

namespace TarnClient {

/// How long to wait before a camera is connected again: 1, 2, 4, 8 and then 15 times `unit_ms`, up to a quarter more or
/// less. What only someone's help can mend is not hurried.
/// `failed`: attempts since it last played, from 1. `chance`: from 0 to 1.
qint64 ReconnectPause(int failed, PictureLoss loss, double chance, qint64 unit_ms);

}  // namespace TarnClient
