#pragma once

#include <cstdint>

// The streams of a camera by their numbers; cameras may offer others, which have no name here.
namespace view_plugin_protocol {

constexpr int32_t kMainStream = 0;
constexpr int32_t kSubStream = 1;
constexpr int32_t kSmoothStream = 2;

}  // namespace view_plugin_protocol
