// Layout records: the binary strings that give a window, a control or a timer its initial
// properties in one call.
//
// Storage: one leading byte min(n, 255), then n bytes of properties, each a name in ASCII
// letters, one blank, and a value whose form the target class declares for that name:
// integer (8 bytes LE), boolean (1), small enumeration (1), colour (4, 0x00RRGGBB LE),
// single (4), double (8), string (4-byte LE byte count, then UTF-8 bytes).
//
// The encoder builds such a string at compile time, so a record in the source reads like a
// table; the reader applies one to any Object through its class's property table.
#pragma once

#include <string_view>

#include "platform/core/object.h"

namespace platform {

// _SetProperties: applies every property of `record` (leading length byte included) to `target`
// in record order. The length is the string's own, never the leading byte. MacProcID is read as
// an integer and applied to nothing. A name the class lacks or a value that runs past the end
// raises RecordFormatException; properties applied before that stay applied.
void ApplyRecord(Object& target, std::string_view record);

}  // namespace platform
