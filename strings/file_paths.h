// Unix path names taken apart as plain text.
//
// Only my_current_directory asks the system anything; no function looks whether a path exists. The
// separator is "/". No function throws (memory exhaustion aside).
#pragma once
#include <string>

/// What follows the last "/" of `path`: "" when it ends with one, the whole path when it has none.
///
///     extract_filename_name("/usr/lib/x.so");  // "x.so"
std::string extract_filename_name(const std::string& path);

/// What stands before the last "/" of `path`: "." when it has none, "/" when its only one comes
/// first. A "/" at the end is a "/" like any other: "a/b/" gives "a/b".
///
///     extract_filename_path("/usr/lib/x.so");  // "/usr/lib"
std::string extract_filename_path(const std::string& path);

/// `path` up to the last point of its last component: one extension less. Unchanged when there is
/// no such point, when a backslash follows it, or when another point stands before it. A point at
/// the very end always goes ("x/.." gives "x/."), and so does one at the front of a component:
/// ".profile" gives "" and "dir/.profile" gives "dir/".
///
///     supress_filename_extension("a.tar.gz");  // "a.tar"
std::string supress_filename_extension(const std::string& path);

/// The working directory, without a "/" at its end: the environment's PWD when that names it, else
/// its resolved path. "" when the system cannot tell.
///
///     const std::string here = my_current_directory();  // such as "/home/a"
std::string my_current_directory();

/// The path that leads from the directory `base`, or the current one when `base`
/// is empty, to `target`: "." when they are the same, also when they differ only
/// by "/"s that no name follows. A relative target that shares no first
/// component with the base, and so the empty target too, comes back unchanged.
///
/// Prints a trace on the standard error stream: "demarrage ", the target, "|" and the base;
/// "intermediaire: " and what is left of each after their common components (omitted when they are
/// the same); "--> " and the result.
///
///     relative_directory_path("/home/a/x/y", "/home/a/z");  // "../x/y"
std::string relative_directory_path(const std::string& target, const std::string& base);
