// Runs code without the privileges of root, which can access every file.
#pragma once

#include <functional>

// Forks and runs `body` in the child, as the user nobody if this process runs as root. Failures of `body` are failures
// of this test.
void RunUnprivileged(std::function<void()> const& body);
