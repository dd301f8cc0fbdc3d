// The decoders of the command blocks: the client's requests and the server's responses.
#pragma once

#include "smb/smb_fields.hpp"

namespace wirelines::smb {

void UnknownAnalyze(Fields& f);  // a command without a decoder of its own
void EmptyAnalyze(Fields& f);    // no parameters: word count and byte count
void GenericAnalyze(Fields& f);  // words and bytes as they are

}  // namespace wirelines::smb
