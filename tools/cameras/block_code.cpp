#include "block_code.h"

#include <cmath>

namespace TarnDemo {

namespace {

constexpr int kColumns = 6, kRows = 4, kWidthCells = 32, kHeightCells = 24;
constexpr int kPictures = 60, kRate = 15, kPhases = 4;

int Bits(int value, int from, int count) {
  return value >> (kColumns * kRows - from - count) & ((1 << count) - 1);
}

int GrayAt(const QImage& picture, int row, int column) {
  return qGray(picture.pixel((2 * column + 1) * picture.width() / (2 * kWidthCells),
                             (2 * row + 1) * picture.height() / (2 * kHeightCells)));
}

}  // namespace

std::optional<BlockCode> ReadBlock(const QImage& picture) {
  if (picture.width() < kWidthCells || picture.height() < kHeightCells) {
    return std::nullopt;
  }
  const int between = (GrayAt(picture, 0, 0) + GrayAt(picture, 0, 1)) / 2;
  int value = 0;
  for (int cell = 0; cell < kColumns * kRows; ++cell) {
    value = value << 1 | int(GrayAt(picture, cell / kColumns, cell % kColumns) > between);
  }
  const int number = Bits(value, 2, 8), camera = Bits(value, 10, 8), stream = Bits(value, 18, 2);
  const int check = (number >> 4) ^ (number & 15) ^ (camera >> 4) ^ (camera & 15) ^ stream ^ 10;
  if (Bits(value, 0, 2) != 2 || check != Bits(value, 20, 4) || number >= kPictures || camera == 0) {
    return std::nullopt;
  }
  return BlockCode{number, camera, stream == 1};
}

double AgeMs(const BlockCode& code, double now_ms) {
  const double phase = double(code.camera % kPhases) / kPhases;
  const double position = now_ms / 1000 * kRate - phase;  // in pictures
  const double since = std::fmod(position - code.number, kPictures);
  return since * 1000 / kRate;
}

}  // namespace TarnDemo
