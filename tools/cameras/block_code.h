#pragma once

#include <QImage>
#include <optional>

namespace TarnDemo {

/// What a picture of the demo cameras says of itself; see block_code.py.
struct BlockCode {
  int number = 0;  // of the picture in its loop
  int camera = 0;
  bool is_sub = false;
};

/// Empty when there is no block to be read.
std::optional<BlockCode> ReadBlock(const QImage& picture);

/// How old a picture is by its number, in milliseconds; less than four seconds.
double AgeMs(const BlockCode& code, double now_ms);

}  // namespace TarnDemo
