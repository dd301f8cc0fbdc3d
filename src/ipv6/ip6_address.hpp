// IPv6 addresses as text. Each takes a view of 16 bytes; hexadecimal digits are upper case.
#pragma once

#include "core/bytes.hpp"
#include "core/format.hpp"

namespace wirelines {

// All eight groups without leading zeros: "FE80:0:0:0:202:B3FF:FE1E:8329".
TextBuffer FormatIp6Addr(Bytes address);

// The interface identifier, always 19 characters: "0202:B3FF:FE1E:8329".
TextBuffer FormatIp6AddrSimple(Bytes address);

// The first zeros compressed: "FE80::202:B3FF:FE1E:8329". At most 39 characters.
TextBuffer FormatIp6AddrSimple2(Bytes address);

}  // namespace wirelines
