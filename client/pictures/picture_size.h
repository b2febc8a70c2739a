#pragma once

#include <QSize>

namespace TarnClient {

/// The size in which a picture that comes as `coded` is handed to who wants it about as large as `wanted`: never larger
/// than it comes, never smaller than wanted, and the same for windows that differ by a few pixels. An empty `wanted`
/// stands for a small picture that no one has asked for yet.
QSize HandedSize(const QSize& coded, const QSize& wanted);

}  // namespace TarnClient
