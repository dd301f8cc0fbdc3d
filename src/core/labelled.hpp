// A label and a text of the frame, over as many lines as the text needs.
#pragma once

#include "core/bytes.hpp"
#include "core/lines.hpp"

namespace wirelines {

// A zero-terminated text of at most max_bytes bytes; the end of the range in `attributes` is not used. A byte past the
// capture ends the text. Returns the bytes shown without the terminator.
int32_t DspTitleString(LineList& list, std::string_view label, Bytes text, int32_t max_bytes,
                       const LineAttributes& attributes);

// Exactly text.size() bytes; what is shown of a line ends at its first zero byte.
void DspLabelledText(LineList& list, std::string_view label, Bytes text, const LineAttributes& attributes);

}  // namespace wirelines
