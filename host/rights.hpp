// The rights that opening an interface takes, and giving them up.
#pragma once

#include <string>

namespace wirelines::host {

// Becomes the user who is to own what follows, and gives up every capability, for good: to be called before any byte
// of a frame is looked at. Root becomes `user` when that is given, else who ran sudo, else nobody; with `stay_root`,
// instead of nobody, root without any capability. Throws Failure.
void give_up_rights(const std::string& user, bool stay_root);

// The capabilities alone: those that the program's file has, when it runs as an ordinary user. Throws Failure.
void give_up_capabilities();

}  // namespace wirelines::host
