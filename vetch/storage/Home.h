// The user's home directory.
#pragma once

#include <string>

// $HOME, read at each call, with exactly one "/" at its end; "" when unset or empty. Any thread.
std::string Home();
