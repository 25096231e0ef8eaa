// Paths in the system's own form, with `\` between their components, and in the form of Unix.
//
// The library's rules on paths know `\` only: the name of a file is what follows the last one. What comes
// from the library is therefore turned at the system call and nowhere else, and what a program hands to the
// library is turned once, at its front door. A `\` can be part of a Unix file name; such a file has no name
// inside the library, and it is refused at the front door rather than looked for in a folder that does not
// exist.
#pragma once

#include <string>
#include <string_view>

namespace orve::adapters::posix {

/// A path of the library as the system calls want it: every `\` is a separator; `/` is accepted as one too.
/// Raises 52 for a path that is empty or holds a NUL, which no system call could take whole.
[[nodiscard]] std::string PercorsoUnix(std::string_view percorso);

/// A path of Unix as the library wants it. Raises 52 for a path that is empty, holds a NUL, or names a file
/// or folder with a `\` in its name.
[[nodiscard]] std::string PercorsoLibreria(std::string_view percorso);

/// The same for a path relative to the current folder, made absolute and without "." and ".." where that is
/// possible without looking at the disk; symbolic links stay. A file of the root is given as `\.\name`, so
/// that a folder stands in front of every name.
[[nodiscard]] std::string PercorsoLibreriaAssoluto(std::string_view percorso);

}  // namespace orve::adapters::posix
