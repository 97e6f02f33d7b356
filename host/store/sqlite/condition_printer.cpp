#include "host/dialect/comparison.h"
#include "host/store/sqlite/engine_names.h"
#include "host/store/sqlite/statement_printer.h"

namespace qorhost::sqlite {

using namespace dialect;

void StatementPrinter::PrintCondition(const Expression& node) {
  if (IsCondition(node) && node.coercion == Coercion::kNone) {
    PrintTruth(node);
  } else {
    PrintValue(node);
  }
}

void StatementPrinter::PrintTruth(const Expression& node) {
  switch (node.kind) {
    case NodeKind::kCompare:
      PrintCompare(node);
      break;
    case NodeKind::kAnd:
      PrintChain(node, 0, node.operands.size(), " AND ");
      break;
    case NodeKind::kOr:
      PrintChain(node, 0, node.operands.size(), " OR ");
      break;
    case NodeKind::kXor:
      PrintXor(node);
      break;
    case NodeKind::kNot: {
      const Stacked stacked(*this, kStackOfBrackets - 1, node.offset);
      Write("(NOT ");
      PrintCondition(*node.operands[0]);
      Write(")");
      break;
    }
    case NodeKind::kLike: {
      const Stacked stacked(*this, kStackOfBrackets, node.offset);
      Write("(");
      PrintValue(*node.operands[0]);
      Write(node.negated ? " NOT LIKE " : " LIKE ");
      PrintValue(*node.operands[1]);
      Write(")");
      break;
    }
    case NodeKind::kBetween: {
      const Stacked stacked(*this, kStackOfBrackets + 2, node.offset);
      Write("(");
      PrintCollated(node);
      Write(node.negated ? " NOT BETWEEN " : " BETWEEN ");
      PrintValue(*node.operands[1]);
      Write(" AND ");
      PrintValue(*node.operands[2]);
      Write(")");
      break;
    }
    case NodeKind::kInList:
      PrintInList(node);
      break;
    case NodeKind::kInSelect: {
      const Stacked stacked(*this, kStackOfBrackets, node.offset);
      Write("(");
      PrintCollated(node);
      Write(node.negated ? " NOT IN (" : " IN (");
      PrintQuery(*node.query, false);
      Write("))");
      break;
    }
    case NodeKind::kExists: {
      const Stacked stacked(*this, kStackOfBrackets, node.offset);
      Write("EXISTS (");
      PrintQuery(*node.query, false);
      Write(")");
      break;
    }
    case NodeKind::kIsNull:
      PrintNullTest(*node.operands[0], node.negated);
      break;
    case NodeKind::kFunction:  // IsNull
      PrintNullTest(*node.operands[0], false);
      break;
    default:
      break;  // no condition
  }
}

void StatementPrinter::PrintNullTest(const Expression& tested, bool negated) {
  const Stacked stacked(*this, kStackOfBrackets, tested.offset);
  Write("(");
  PrintValue(tested);
  Write(negated ? " IS NOT NULL)" : " IS NULL)");
}

void StatementPrinter::PrintCollated(const Expression& node) {
  PrintValue(*node.operands[0]);
  Write(node.collated ? kCollate : "");
}

void StatementPrinter::PrintCompare(const Expression& node) {
  const Stacked stacked(*this, kStackOfBrackets, node.offset);
  Write("(");
  PrintCollated(node);
  Write(SymbolOf(node.op));
  PrintValue(*node.operands[1]);
  Write(")");
}

void StatementPrinter::PrintInList(const Expression& node) {
  const Stacked stacked(*this, kStackOfBrackets + 3, node.offset);
  Write("(");
  PrintCollated(node);
  Write(node.negated ? " NOT IN (" : " IN (");
  for (std::size_t index = 1; index < node.operands.size(); ++index) {
    Write(index > 1 ? ", " : "");
    PrintValue(*node.operands[index]);
  }
  Write("))");
}

void StatementPrinter::PrintXor(const Expression& node) {
  const Stacked stacked(*this, kStackOfBrackets * 2, node.offset);
  Write("((NOT ");
  PrintCondition(*node.operands[0]);
  Write(") <> (NOT ");
  PrintCondition(*node.operands[1]);
  Write("))");
}

}  // namespace qorhost::sqlite
