#include "frame/runtime_error.h"

#include <new>
#include <utility>

namespace qorcred {

RuntimeError::RuntimeError(ErrorNumber number)
    : number_(number), description_(DescriptionOf(number)) {}

RuntimeError::RuntimeError(ErrorNumber number, std::string description)
    : number_(number), description_(std::move(description)) {}

std::string_view DescriptionOf(ErrorNumber number) {
  switch (number) {
    case ErrorNumber::kInvalidProcedureCall:
      return "Invalid procedure call or argument";
    case ErrorNumber::kOverflow:
      return "Overflow";
    case ErrorNumber::kOutOfMemory:
      return "Out of memory";
    case ErrorNumber::kIndexOutOfRange:
      return "Subscript out of range";
    case ErrorNumber::kTypeMismatch:
      return "Type mismatch";
    case ErrorNumber::kInternal:
      return "Internal error";
    case ErrorNumber::kObjectNotSet:
      return "Object variable not set";
    case ErrorNumber::kInvalidUseOfNull:
      return "Invalid use of Null";
    case ErrorNumber::kObjectRequired:
      return "Object required";
    case ErrorNumber::kCannotCreateComponent:
      return "Component can't create object";
    case ErrorNumber::kUnknownMember:
      return "Object doesn't support this property or method";
    case ErrorNumber::kUnknownArgument:
      return "Named argument not found";
    case ErrorNumber::kArgumentNotOptional:
      return "Argument not optional";
    case ErrorNumber::kWrongArgumentCount:
      return "Wrong number of arguments or invalid property assignment";
    case ErrorNumber::kApplicationDefined:
      break;
  }
  return "Application-defined or object-defined error";
}

RuntimeError CurrentFailure() {
  try {
    try {
      throw;
    } catch (const RuntimeError& failure) {
      return failure;
    } catch (const std::bad_alloc&) {
      return RuntimeError(ErrorNumber::kOutOfMemory);
    } catch (const std::exception& failure) {
      return {ErrorNumber::kInternal, failure.what()};
    } catch (...) {
      return RuntimeError(ErrorNumber::kInternal);
    }
  } catch (const std::bad_alloc&) {
    // There was no room for the failure's own text; this one needs none.
    return RuntimeError(ErrorNumber::kOutOfMemory);
  }
}

}  // namespace qorcred
