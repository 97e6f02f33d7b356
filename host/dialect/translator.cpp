#include "host/dialect/translator.h"

#include <deque>
#include <functional>
#include <unordered_map>
#include <utility>

#include "host/dialect/binder.h"
#include "host/dialect/lexer.h"
#include "host/dialect/parameters.h"
#include "host/dialect/parser.h"
#include "host/dialect/printed_statement.h"

namespace qorhost::dialect {

namespace {

constexpr std::size_t kMostShapes = 512;
// A shape with a longer key is translated each time, so that the cache stays small.
constexpr std::size_t kLongestKey = 4096;
constexpr char kEndMark = '\0';

struct KeyHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view key) const noexcept {
    return std::hash<std::string_view>{}(key);
  }
};

// A shape with what it takes to bind its parameters; or, where literals of the statement are part
// of the shape, which ones, the shapes being filed under longer keys.
struct Entry {
  std::vector<std::size_t> structural;
  std::shared_ptr<const Shape> shape;
  std::vector<Parameter> parameters;
  std::vector<qorcred::Value> values;
  Skeleton skeleton;          // of a shape that depends on no literal
  Entry* follower = nullptr;  // what was translated next, the last time
};

std::string Located(const std::string& message, std::size_t line, std::size_t column) {
  return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + message;
}

Statement BoundTree(std::string_view sql, const std::vector<Literal>& literals) {
  Statement statement = Parse(sql, literals);
  Bind(sql, literals, statement);
  return statement;
}

/// Null for any other statement than an INSERT of literals, and for one that gives the identity.
std::shared_ptr<const AddedRow> AddedRowOf(const Statement& statement) {
  if (statement.kind != StatementKind::kInsert) {
    return nullptr;
  }
  auto row = std::make_shared<AddedRow>();
  row->table = statement.table.table;
  for (const Assignment& assignment : statement.assignments) {
    const Expression& value = *assignment.value;
    const bool isIdentity = assignment.column->type == ColumnType::kIdentity;
    if (isIdentity && value.kind == NodeKind::kNull) {
      continue;
    }
    std::optional<qorcred::Value> constant;
    if (value.kind == NodeKind::kNull) {
      constant = qorcred::Value(qorcred::Null{});
    } else if (value.kind == NodeKind::kTrue || value.kind == NodeKind::kFalse) {
      constant = qorcred::Value(value.kind == NodeKind::kTrue ? -1 : 0);
    } else if (value.kind != NodeKind::kLiteral) {
      return nullptr;
    }
    if (isIdentity || value.coercion != Coercion::kNone) {
      return nullptr;
    }
    row->cells.push_back({assignment.column, std::move(constant)});
  }
  return row;
}

Entry TranslateShape(std::string_view sql, const std::vector<Literal>& literals,
                     EnginePrinter print) {
  Statement statement = BoundTree(sql, literals);
  PrintedStatement printed = print(sql, statement);
  auto shape = std::make_shared<Shape>();
  shape->kind = statement.kind;
  shape->sql = std::move(printed.sql);
  shape->sqlInUnit = std::move(printed.sqlInUnit);
  shape->takesNewRow = statement.takesNewRow;
  shape->addedRow = AddedRowOf(statement);
  if (statement.table.table != nullptr) {
    shape->table = statement.table.table->name;
  }
  for (const ResultColumn& result : statement.query.results) {
    shape->resultTypes.push_back(result.type);
  }
  Entry entry;
  entry.structural = std::move(statement.structural);
  entry.shape = std::move(shape);
  entry.parameters = std::move(printed.parameters);
  return entry;
}

}  // namespace

SqlError::SqlError(const std::string& message, std::size_t line, std::size_t column)
    : std::runtime_error(Located(message, line, column)),
      message_(message),
      line_(line),
      column_(column) {}

StatementKind KindOf(std::string_view sql) {
  std::string key;
  std::vector<Literal> literals;
  ReadShape(sql, key, literals);
  return BoundTree(sql, literals).kind;
}

class Translator::Cache {
 public:
  explicit Cache(EnginePrinter print) : print_(print) {}

  Translation Translate(std::string_view sql, std::string_view timeStamp) {
    Entry& entry = EntryOf(sql);
    entry.values.resize(entry.parameters.size());
    const Bindings bindings{sql, literals_, timeStamp};
    for (std::size_t index = 0; index < entry.parameters.size(); ++index) {
      SetParameter(bindings, entry.parameters[index], entry.values[index]);
    }
    return {entry.shape, entry.values};
  }

  [[nodiscard]] std::size_t parsed() const noexcept { return parsed_; }

 private:
  // Programs repeat the same few statements in the same order: most often it is the one that
  // followed the last time.
  Entry& EntryOf(std::string_view sql) {
    Entry* const before = std::exchange(last_, nullptr);
    Entry* entry = before == nullptr ? nullptr : before->follower;
    if (entry == nullptr || !ReadAlong(sql, entry->skeleton, literals_)) {
      ReadShape(sql, key_, literals_);
      entry = &EntryOfShape(sql);
    }
    // Where entries were dropped, EntryOfShape() has forgotten who follows whom.
    if (!entry->skeleton.texts.empty()) {
      if (before != nullptr && !hasDropped_) {
        before->follower = entry;
      }
      last_ = entry;
    }
    hasDropped_ = false;
    return *entry;
  }

  Entry& EntryOfShape(std::string_view sql) {
    auto found = entries_.find(std::string_view(key_));
    bool isExtended = false;
    if (found != entries_.end() && !found->second.structural.empty()) {
      ExtendKey(found->second.structural);
      isExtended = true;
      found = entries_.find(std::string_view(key_));
    }
    if (found != entries_.end()) {
      return found->second;
    }
    ++parsed_;
    Entry entry = TranslateShape(sql, literals_, print_);
    const std::vector<std::size_t> structural = std::exchange(entry.structural, {});
    if (!structural.empty() && !isExtended) {
      Entry directory;
      directory.structural = structural;
      File(std::move(directory));
      ExtendKey(structural);
    }
    if (structural.empty() && key_.size() <= kLongestKey) {
      entry.skeleton = SkeletonOf(sql, literals_);
    }
    return File(std::move(entry));
  }

  // Appends the literals that belong to the shape, behind a mark that no statement ends with.
  void ExtendKey(const std::vector<std::size_t>& structural) {
    key_ += kEndMark;
    for (const std::size_t literal : structural) {
      const std::string_view content = literals_[literal].content;
      key_.append(std::to_string(content.size())).append(":").append(content);
    }
  }

  Entry& File(Entry entry) {
    if (key_.size() > kLongestKey) {
      uncached_ = std::move(entry);
      return uncached_;
    }
    const auto [place, isNew] = entries_.insert_or_assign(key_, std::move(entry));
    if (isNew) {
      order_.push_back(key_);
      if (order_.size() > kMostShapes) {
        entries_.erase(order_.front());
        order_.pop_front();
        ForgetFollowers();
      }
    }
    return place->second;
  }

  void ForgetFollowers() {
    for (auto& [key, entry] : entries_) {
      entry.follower = nullptr;
    }
    hasDropped_ = true;
  }

  EnginePrinter print_;
  std::unordered_map<std::string, Entry, KeyHash, std::equal_to<>> entries_;
  std::deque<std::string> order_;  // of the entries, the oldest first
  Entry uncached_;
  Entry* last_ = nullptr;  // the last one translated, when it has a skeleton
  bool hasDropped_ = false;
  std::string key_;
  std::vector<Literal> literals_;
  std::size_t parsed_ = 0;
};

Translator::Translator(EnginePrinter print) : cache_(std::make_unique<Cache>(print)) {}

Translator::~Translator() = default;

Translation Translator::Translate(std::string_view sql, std::string_view timeStamp) {
  return cache_->Translate(sql, timeStamp);
}

std::size_t Translator::parsed() const noexcept {
  return cache_->parsed();
}

}  // namespace qorhost::dialect
