#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace TarnHost::Store {

/// What a window of a plan keeps of its camera, and what the site says of it.
struct NamedCamera {
  std::string code, name;
};

/// The cameras of a site whose names hold a text.
class CFoundCameras {
 public:
  bool IsEmpty() const { return names_.empty(); }
  /// The name by which the first of these cameras was found; null for none.
  const std::string* FirstOf(const std::vector<uint32_t>& cameras) const;

 private:
  friend class CCameraNames;
  std::vector<int32_t> places_;  // by the camera's number: its place in names_, or -1
  std::vector<std::string> names_;
};

/// The cameras that windows of plans name. Each name is kept once, however many windows have it, under a number that
/// rows of plans hold; beside it stands the name that the site has for this camera now. A number is never taken back:
/// names are few. Thread: any.
class CCameraNames {
 public:
  /// The form in which names are compared.
  using Fold = std::string (*)(const std::string& name);
  explicit CCameraNames(Fold fold) : fold_(fold) {}

  /// The numbers of these cameras, each once, in their order.
  std::vector<uint32_t> NumbersOf(const std::vector<NamedCamera>& cameras);
  /// What the site's cameras are called from now on.
  void SetSiteNames(const std::vector<NamedCamera>& cameras);
  /// Those whose name, as a window has it or as the site has it now, contains `folded`.
  CFoundCameras Find(const std::string& folded) const;

 private:
  struct Name {
    std::string text, folded;
  };
  struct Camera {
    std::string code;
    Name in_window, at_site;  // the second is empty where it is the first
  };

  uint32_t NumberOf(const NamedCamera& camera);
  void Renew(Camera* camera) const;

  const Fold fold_;
  mutable std::mutex mutex_;
  std::vector<Camera> cameras_;
  std::unordered_map<std::string, uint32_t> numbers_;     // by code and name
  std::unordered_map<std::string, std::string> at_site_;  // names by code
};

}  // namespace TarnHost::Store
