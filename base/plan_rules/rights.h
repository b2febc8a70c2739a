#pragma once

#include <QString>

// The rights that changes of public plans and groups take.
namespace view_plugin_protocol {

/// The host's codes of the rights.
enum Right : int { AddRight = 5, EditRight = 6, DeleteRight = 7 };
constexpr Right kRights[] = {AddRight, EditRight, DeleteRight};

/// Whether `code` is that of a right.
bool IsRight(int code);
/// Whether the host grants the current user this right. Thread: any.
bool HasRight(Right right);
/// For the user who lacks the right.
QString LackOf(Right right);

}  // namespace view_plugin_protocol
