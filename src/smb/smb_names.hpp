// Names of SMB commands and errors.
#pragma once

#include <string_view>

#include "core/bytes.hpp"

namespace wirelines::smb {

std::string_view SmbCommandToName(uint8_t command);         // "" for an unknown command
std::string_view SmbErrorClassToName(uint8_t error_class);  // of a DOS error
std::string_view SmbDosErrorToName(uint16_t code);          // class 1
std::string_view SmbServerErrorToName(uint16_t code);       // class 2
std::string_view SmbHardwareErrorToName(uint16_t code);     // class 3
std::string_view NtStatusToName(uint32_t status);

}  // namespace wirelines::smb
