#pragma once

namespace TarnClient {

enum class VideoCodec { Unknown, H264, H265, Jpeg };

}  // namespace TarnClient
