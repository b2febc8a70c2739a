#pragma once

#include <cstdint>
#include <mutex>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace TarnHost::Store {

/// What a window of a plan keeps of its camera, and what the site says of it.
struct NamedCamera {
  std::string code, name;
};

/// Tells cameras apart that have another code or another name.
inline std::string KeyOf(const NamedCamera& camera) {
  return std::to_string(camera.code.size()) + ':' + camera.code + camera.name;
}

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

/// A camera with the number that the store has given it.
struct NumberedCamera {
  uint32_t number = 0;
  NamedCamera camera;
};

/// The cameras that windows of plans name. Each name is kept once, however many windows have it, under the number that
/// the store gave it and rows of plans hold; beside it stands the name that the site has for this camera now. Thread:
/// any.
class CCameraNames {
 public:
  /// The form in which names are compared.
  using Fold = std::string (*)(const std::string& name);
  explicit CCameraNames(Fold fold) : fold_(fold) {}

  /// Takes further cameras; those that are known already stay as they are.
  void Add(const std::vector<NumberedCamera>& cameras);
  /// 0, which is no number, for one that is not known.
  uint32_t NumberOf(const NamedCamera& camera) const;
  bool HasAll(const std::vector<uint32_t>& numbers) const;
  /// These alone are known from now on.
  void Replace(const std::vector<NumberedCamera>& cameras);
  /// What the site's cameras are called from now on.
  void SetSiteNames(const std::vector<NamedCamera>& cameras);
  /// Those whose name, as a window has it or as the site has it now, contains `folded`.
  CFoundCameras Find(const std::string& folded) const;
  /// Those that windows name by one of these codes.
  CFoundCameras FindCodes(const std::set<std::string>& codes) const;

 private:
  struct Name {
    std::string text, folded;
  };
  struct Camera {
    std::string code;
    Name in_window, at_site;  // the second is empty where it is the first
  };

  template <class Matches>
  CFoundCameras FindWhere(const Matches& name_that_matches) const;
  void Take(const std::vector<NumberedCamera>& cameras);
  void Renew(Camera* camera) const;

  const Fold fold_;
  mutable std::mutex mutex_;
  std::vector<Camera> cameras_;
  std::vector<int32_t> places_;                           // by number: the place in cameras_, or -1
  std::unordered_map<std::string, uint32_t> numbers_;     // by KeyOf()
  std::unordered_map<std::string, std::string> at_site_;  // names by code
};

}  // namespace TarnHost::Store
