#pragma once

namespace Wren::Base {

/// Base of classes whose identity matters: neither copied nor moved.
class CNoncopyable {
 public:
  CNoncopyable(const CNoncopyable&) = delete;
  CNoncopyable& operator=(const CNoncopyable&) = delete;

 protected:
  CNoncopyable() = default;
  ~CNoncopyable() = default;
};

}  // namespace Wren::Base
