#include "host/store/postgres/statement_printer.h"

namespace qorhost::postgres {

using namespace dialect;

void StatementPrinter::PrintValue(const Expression& node) {
  if (node.coercion == Coercion::kNone) {
    PrintOwn(node);
  } else {
    PrintCoerced(node);
  }
}

/// A value in another form than its own.
void StatementPrinter::PrintAs(const Expression& node, Form form) {
  const Form own = FormOf(node);
  if (own == Form::kNull) {
    Write("NULL::");
    Write(TypeOf(form));
  } else if (own == form) {
    PrintValue(node);
  } else {
    PrintConverted(node, own, form);
  }
}

void StatementPrinter::PrintConverted(const Expression& node, Form own, Form form) {
  switch (form) {
    case Form::kWhole:
      Write(own == Form::kDouble ? "desktop.rounded(" : "desktop.rounded(desktop.number_of(");
      PrintValue(node);
      Write(own == Form::kDouble ? ")" : "))");
      break;
    case Form::kDouble:
      Write(own == Form::kWhole ? "(" : "desktop.number_of(");
      PrintValue(node);
      Write(own == Form::kWhole ? ")::float8" : ")");
      break;
    case Form::kAny:
      if (MayBeBoundAsText(node)) {
        PrintLiteral(node, "desktop.bound_value(");
        break;
      }
      if (node.coercion == Coercion::kNumber &&
          (OwnFormOf(node) == Form::kText || OwnFormOf(node) == Form::kAny)) {
        Write("desktop.number_or_text(");
        PrintOwn(node);
        Write(")");
        break;
      }
      Write("to_jsonb(");
      PrintValue(node);
      Write(")");
      break;
    case Form::kText:
    case Form::kNull:
      Write("desktop.text_of(");
      PrintValue(node);
      Write(")");
      break;
  }
}

/// What the binder makes of a value before it is compared or stored.
void StatementPrinter::PrintCoerced(const Expression& node) {
  const Form own = OwnFormOf(node);
  switch (node.coercion) {
    case Coercion::kText:
      Write(node.valueClass == ValueClass::kDate ? "desktop.date_text(" : "");
      PrintOwnAs(node, Form::kText);
      Write(node.valueClass == ValueClass::kDate ? ")" : "");
      break;
    case Coercion::kNumber: {
      const bool isRead = own == Form::kText || own == Form::kAny;
      Write(isRead ? "desktop.text_number(" : "");
      PrintOwnAs(node, isRead ? own : Form::kDouble);
      Write(isRead ? ")" : "");
      break;
    }
    case Coercion::kDate:
    case Coercion::kStoreDate:
      Write(node.coercion == Coercion::kDate ? "desktop.date(" : "desktop.store_date(");
      PrintOwnAs(node, own == Form::kWhole  ? Form::kDouble
                       : own == Form::kNull ? Form::kText
                                            : own);
      Write(")");
      break;
    case Coercion::kStoreLong:
      Write("desktop.rounded(");
      PrintOwnAs(node, Form::kDouble);
      Write(")");
      break;
    case Coercion::kStoreDouble:
      PrintOwnAs(node, Form::kDouble);
      break;
    case Coercion::kStoreBoolean:
      Write("desktop.store_boolean(");
      PrintOwnAs(node, own == Form::kWhole || own == Form::kNull ? Form::kDouble : own);
      Write(")");
      break;
    case Coercion::kNone:
      break;
  }
}

/// A value in some form, before what the binder makes of it.
void StatementPrinter::PrintOwnAs(const Expression& node, Form form) {
  const Form own = OwnFormOf(node);
  if (own == Form::kNull) {
    Write("NULL::");
    Write(TypeOf(form));
    return;
  }
  if (own == form) {
    PrintOwn(node);
    return;
  }
  switch (form) {
    case Form::kDouble:
      Write(own == Form::kWhole ? "(" : "desktop.number_of(");
      PrintOwn(node);
      Write(own == Form::kWhole ? ")::float8" : ")");
      break;
    default:
      Write("desktop.text_of(");
      PrintOwn(node);
      Write(")");
      break;
  }
}

}  // namespace qorhost::postgres
