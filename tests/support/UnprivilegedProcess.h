// Runs code without the privileges of root, which can access every file.
#pragma once

#include <functional>
#include <string>

// Forks and runs `body` in the child, as the user nobody if this process runs as root. Failures of `body` are failures
// of this test.
void RunUnprivileged(std::function<void()> const& body);

// Returns whether a program can be executed there: not if it is in a folder that only root can enter.
bool CanExecuteUnprivileged(std::string const& program);
