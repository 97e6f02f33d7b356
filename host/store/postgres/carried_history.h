// The history as it is stored, in the tables AuditEntries, AuditRows and UnitVersions.
#pragma once

#include "host/store/carried_history.h"

namespace qorhost::postgres {

class Session;

class CarriedHistory final : public qorhost::CarriedHistory {
 public:
  explicit CarriedHistory(Session& session) : session_(session) {}

  void EachEntry(const std::function<void(const CarriedEntry&)>& take) override;
  [[nodiscard]] std::vector<std::pair<std::int32_t, UnitVersion>> Versions() override;
  void Add(const CarriedEntry& carried) override;
  void AddVersion(std::int32_t unitKey, const UnitVersion& version) override;

 private:
  Session& session_;
};

}  // namespace qorhost::postgres
