// Variants of automation clients to values and back.
#pragma once

#include <windows.h>

#include "frame/value.h"

namespace qorcred::com {

/// The value in `variant`, whatever its shape: by reference or not, every number, dates, texts,
/// objects, arrays of texts or variants with one dimension; DISP_E_PARAMNOTFOUND is Missing.
/// Raises kTypeMismatch for anything else.
[[nodiscard]] Value ToValue(const VARIANT& variant);

/// A date as its text in the user's form, as automation has it where a text is wanted; any other
/// value as it is.
[[nodiscard]] Value DateAsText(Value value);

/// Puts a value into `variant`, which must hold nothing to be freed. The caller owns the content.
/// Raises kTypeMismatch for an object that is not an automation object's.
void PutInto(VARIANT& variant, const Value& value);

/// Writes `value` where a client passed an argument by reference, in the type that stands there;
/// one that was passed by value is left alone. Raises as converting does.
void WriteBack(VARIANT& argument, const Value& value);

}  // namespace qorcred::com
