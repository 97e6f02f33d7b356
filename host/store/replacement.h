// A store that is about to make room for another one.
#pragma once

#include <filesystem>
#include <functional>

namespace qorhost {

/// From its making to its end nobody else writes to the store. Programs that have it open go on
/// reading what they have; for writing, they find that their file has moved.
class Replacement {
 public:
  virtual ~Replacement() = default;
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  /// Puts a whole store, which nobody has open, in the place of the old one: `moveInPlace` gives it
  /// the name. Raises what that raises, and StoreError; the old store is whole then. Once only.
  virtual void Put(const std::filesystem::path& fresh,
                   const std::function<void()>& moveInPlace) = 0;

 protected:
  Replacement() = default;
};

}  // namespace qorhost
