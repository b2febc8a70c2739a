#pragma once

#include <QVector>
#include <memory>

#include "pictures/picture_supply.h"

/// Hands on the pictures of another supply, and notes what is painted of them.
class WatchedPictures : public TarnClient::IPictureSupply {
 public:
  explicit WatchedPictures(std::shared_ptr<TarnClient::IPictureSupply> target) : target_(std::move(target)) {}

  std::unique_ptr<TarnClient::IPictureSource> Open(const view_plugin_protocol::PlanWindow& window) override;
  void Prepare(const void* viewer, const QVector<view_plugin_protocol::PlanWindow>& next) override {
    target_->Prepare(viewer, next);
  }

  struct Notes {
    bool reads_blocks = false;  // else nothing is noted
    QVector<double> ages_ms;    // from sending to painting, by the number in the picture
    int without_picture = 0;    // paintings of a camera that had none
  };
  Notes& Seen() { return *notes_; }

 private:
  const std::shared_ptr<TarnClient::IPictureSupply> target_;
  const std::shared_ptr<Notes> notes_ = std::make_shared<Notes>();
};
