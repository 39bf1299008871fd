// Parts of path names, as byte strings: a name in any encoding is accepted.
#pragma once

#include <string>
#include <string_view>

// Returns the last component of a path.
std::string_view BaseNameOf(std::string_view path);

// Returns the path up to and including its last "/"; empty if there is none.
std::string_view FolderOf(std::string_view path);

// Returns the extension with its dot, or an empty string. A dot at the beginning of a name starts no extension.
std::string_view ExtensionOf(std::string_view path);
