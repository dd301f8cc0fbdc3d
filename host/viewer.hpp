// wirelines view is a program of its own: what it serves the page with would take longer to load than all the rest.
#pragma once

namespace wirelines::host {

inline constexpr const char* kViewerDescription = "Look at a trace in the browser";

// Whether `view` is the subcommand, here or in `--help view`.
bool asks_for_viewer(int argc, char** argv);

// Runs it in the place of this program. Returns an exit code when it cannot be run.
int run_viewer(char** argv);

}  // namespace wirelines::host
