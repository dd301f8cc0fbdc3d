// The way through the traces of a command line, or through what an interface brings.
#pragma once

#include "crew.hpp"
#include "options.hpp"
#include "output.hpp"

namespace wirelines::host {

// Handles each frame that the options choose, by as many threads as they say and in order, and stops when none can
// follow or nothing can be written any more. All traces together are one, in the order of time: each stays in its own
// order, and of frames of the same time that of the trace named first comes first. Troubles with traces are told to the
// user as they are met; what can be read is read. Frames of an interface are shown as they come, and counted in the
// end. Returns the exit code of the first trouble, or 0. Throws Failure, before any frame, when the filter is not
// understood or more traces are named than can be open at once.
int walk(const InputOptions& options, Output& out, const Handling& handling);

// Writes the rest of the output. Returns `exit_code`, or EX_IOERR when the output could not be written and that was not
// because its reader has gone.
int finish(Output& out, int exit_code);

}  // namespace wirelines::host
