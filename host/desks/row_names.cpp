#include "host/desks/row_names.h"

#include <fmt/format.h>

#include <utility>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/input_fault.h"
#include "host/desks/report_words.h"
#include "host/desks/typed_input.h"
#include "host/desks/whole_number.h"

namespace qorhost {

std::string RowName(std::int32_t rid) {
  return RowNames({&rid, 1});
}

std::string RowNames(std::span<const std::int32_t> rids) {
  return fmt::format("{}{}", kRowPrefix, fmt::join(rids, ","));
}

std::optional<std::string_view> BehindRowPrefix(std::string_view given) {
  if (qorcred::CompareIgnoringCase(given.substr(0, kRowPrefix.size()), kRowPrefix) != 0) {
    return std::nullopt;
  }
  return given.substr(kRowPrefix.size());
}

std::optional<std::int32_t> RowNamed(std::string_view field, std::string_view given) {
  const std::optional<std::string_view> row = BehindRowPrefix(given);
  if (!row) {
    return std::nullopt;
  }
  const auto rid = WholeNumber(*row);
  if (!rid) {
    throw InputFault(field, *row,
                     "the row '{value}' is none: a row is named by its RID, as in rid:17");
  }
  return rid;
}

GivenRids GivenRids::Named(std::string_view given) {
  const std::optional<std::string_view> rids = BehindRowPrefix(given);
  if (!rids) {
    throw InputFault(report_input::kRids, given,
                     "{field} '{value}' must be rows of the report as in rid:17,18,21: a bare "
                     "number is the number on a credential");
  }
  return GivenRids(std::string(*rids));
}

bool GivenRids::Holds(const qorcred::Value& rid) const {
  return qorcred::IsNumeric(rid) && rids_.contains(qorcred::ToLong(rid));
}

GivenRids::GivenRids(std::string text) : text_(std::move(text)) {
  std::string_view rest = text_;
  for (bool more = true; more; ++count_) {
    const std::size_t comma = rest.find(',');
    more = comma != std::string_view::npos;
    const std::string_view rid = rest.substr(0, comma);
    if (!qorcred::IsDigits(rid)) {
      throw InputFault(report_input::kRids, text_,
                       "{field} '{value}' must be RIDs of the report with commas between them, as "
                       "in 17,18,21");
    }
    rids_.insert(ReadLong(report_input::kRids, rid, kFromZero));
    rest.remove_prefix(more ? comma + 1 : rest.size());
  }
}

}  // namespace qorhost
