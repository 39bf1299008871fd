// Runs code without the rights of root, for whom no file is out of reach.
#pragma once

#include <functional>

// Runs `body` in a fork of this process, as the user nobody where this one is root. The failures of `body` are this
// test's.
void RunUnprivileged(std::function<void()> const& body);
